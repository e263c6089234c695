#include "app/preview/ReaderAnswer.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace tessaly {
namespace {

using Verdict = ReaderAnswer::Verdict;

constexpr ReaderAnswer::Bounds bounds = {.width = 4, .height = 3, .pictures = 2};

bool isAnswer(const std::string& bytes) {
  return ReaderAnswer::of(bytes, bounds).has_value();
}

// The binary layout of ReaderAnswer.
std::string piece(std::uint32_t kind, std::int32_t first, std::int32_t second,
                  std::uint32_t length) {
  const std::int32_t numbers[] = {static_cast<std::int32_t>(kind), first, second,
                                  static_cast<std::int32_t>(length)};
  return {reinterpret_cast<const char*>(numbers), sizeof numbers};
}

std::string picture(std::int32_t width, std::int32_t height, char fill = 'p') {
  return ReaderAnswer::pictureHead(width, height, true) +
         std::string(static_cast<std::size_t>(4 * width * height), fill);
}

const std::string end = ReaderAnswer::verdictPiece(Verdict::shown);

TEST(ReaderAnswer, an_answer_is_read_as_written) {
  const std::string bytes = ReaderAnswer::sizePiece(4000, 3000) + ReaderAnswer::pagesPiece(7) +
                            picture(4, 3, 'a') + ReaderAnswer::pictureHead(1, 1, false) + "bbbb" +
                            ReaderAnswer::factHead(4, 6) + "NameValue!" +
                            ReaderAnswer::verdictPiece(Verdict::locked);
  const auto answer = ReaderAnswer::of(bytes, bounds);
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->verdict, Verdict::locked);
  EXPECT_EQ(answer->width, 4000);
  EXPECT_EQ(answer->height, 3000);
  EXPECT_EQ(answer->pages, 7);
  ASSERT_EQ(answer->pictures.size(), 2U);
  EXPECT_EQ(answer->pictures[0].width, 4);
  EXPECT_EQ(answer->pictures[0].height, 3);
  EXPECT_TRUE(answer->pictures[0].isOpaque);
  EXPECT_EQ(answer->pictures[0].pixels, std::string(48, 'a'));
  EXPECT_FALSE(answer->pictures[1].isOpaque);
  EXPECT_EQ(answer->pictures[1].pixels, "bbbb");
  ASSERT_EQ(answer->facts.size(), 1U);
  EXPECT_EQ(answer->facts[0].first, "Name");
  EXPECT_EQ(answer->facts[0].second, "Value!");
}

TEST(ReaderAnswer, an_interrupted_answer_has_its_complete_pieces_and_no_verdict) {
  const std::string first = picture(2, 2);
  const std::string whole = first + picture(1, 1) + end;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto answer = ReaderAnswer::of(std::string_view(whole).substr(0, length), bounds);
    ASSERT_TRUE(answer.has_value()) << length;
    EXPECT_FALSE(answer->verdict.has_value()) << length;
    EXPECT_EQ(answer->pictures.empty(), length < first.size()) << length;
  }
}

TEST(ReaderAnswer, a_picture_out_of_bounds_is_rejected) {
  EXPECT_TRUE(isAnswer(picture(4, 3) + picture(4, 3)));
  EXPECT_FALSE(isAnswer(picture(5, 3)));
  EXPECT_FALSE(isAnswer(picture(4, 4)));
  EXPECT_FALSE(isAnswer(picture(1, 1) + picture(1, 1) + picture(1, 1)));
  EXPECT_FALSE(isAnswer(piece(2, 0, 1, 0)));
  EXPECT_FALSE(isAnswer(piece(2, 1, -1, 0)));
}

// 65,536 times 65,536 pixels of four bytes would overflow to 0 in 32 bits.
TEST(ReaderAnswer, a_picture_whose_length_does_not_match_its_size_is_rejected) {
  EXPECT_FALSE(isAnswer(piece(2, 2, 2, 15) + std::string(15, 'p')));
  EXPECT_FALSE(isAnswer(piece(2, 2, 2, 17) + std::string(17, 'p')));
  constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
  const ReaderAnswer::Bounds wide = {.width = most, .height = most, .pictures = 1};
  EXPECT_FALSE(ReaderAnswer::of(piece(2, 65536, 65536, 0), wide).has_value());
  EXPECT_FALSE(ReaderAnswer::of(piece(2, most, most, 4), wide).has_value());
}

TEST(ReaderAnswer, a_fact_that_is_too_long_is_rejected) {
  EXPECT_TRUE(isAnswer(piece(4, 3, 0, 3) + "abc"));
  EXPECT_FALSE(isAnswer(piece(4, 4, 0, 3) + "abc"));
  EXPECT_FALSE(isAnswer(piece(4, -1, 0, 3) + "abc"));
  EXPECT_FALSE(isAnswer(piece(4, 3, 0, 5000) + std::string(5000, 'a')));
  std::string many;
  for (int i = 0; i < 64; ++i) many += piece(4, 0, 0, 0);
  EXPECT_TRUE(isAnswer(many));
  EXPECT_FALSE(isAnswer(many + piece(4, 0, 0, 0)));
}

TEST(ReaderAnswer, pieces_after_the_verdict_are_rejected) {
  EXPECT_TRUE(isAnswer(end));
  EXPECT_FALSE(isAnswer(end + end));
  EXPECT_FALSE(isAnswer(end + "x"));
  EXPECT_FALSE(isAnswer(piece(5, -1, 0, 0)));
  EXPECT_FALSE(isAnswer(piece(5, 10, 0, 0)));
}

TEST(ReaderAnswer, anything_else_is_rejected) {
  EXPECT_TRUE(isAnswer(""));
  EXPECT_FALSE(isAnswer("libpng warning: iCCP: known incorrect sRGB profile"));
  EXPECT_FALSE(isAnswer(piece(6, 1, 1, 0)));
  EXPECT_FALSE(isAnswer(piece(0, 0, 1, 0)));
  EXPECT_FALSE(isAnswer(ReaderAnswer::sizePiece(1, 1) + ReaderAnswer::sizePiece(2, 2)));
  EXPECT_FALSE(isAnswer(piece(1, -1, 0, 0)));
}

}  // namespace
}  // namespace tessaly
