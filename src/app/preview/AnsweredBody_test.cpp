#include "app/preview/AnsweredBody.h"

#include <gtest/gtest.h>
#include <string>
#include <variant>

#include "app/preview/PreviewFailures.h"
#include "app/preview/ReaderAnswer.h"

namespace tessaly {
namespace {

using AnsweredBody::End;
using Verdict = ReaderAnswer::Verdict;
using Wanted = ReaderRequest::Wanted;

constexpr Wanted all[] = {Wanted::image, Wanted::imageIfOne, Wanted::document, Wanted::media,
                          Wanted::mediaIfOne};

PreviewLimits small() {
  PreviewLimits limits;
  limits.pixels = {2, 2};
  limits.pages = 2;
  return limits;
}

std::optional<PreviewBody> bodyOf(const std::string& answer, Wanted wanted, End end = End::itself) {
  return AnsweredBody::of(answer, end, wanted, small());
}

std::string reasonIn(const std::optional<PreviewBody>& body) {
  if (!body) return "another kind of file";
  if (std::holds_alternative<FactsOnly>(*body)) return "facts only";
  const auto* failure = std::get_if<PreviewFailure>(&*body);
  return failure != nullptr ? failure->reason.toStdString() : "no failure";
}

std::string verdict(Verdict verdict) {
  return ReaderAnswer::verdictPiece(verdict);
}

const std::string picture = ReaderAnswer::pictureHead(2, 1, true) + "\1\2\3\xFF\4\5\6\xFF";
const std::string size = ReaderAnswer::sizePiece(20, 10);

TEST(AnsweredBody, an_image_is_the_picture_in_the_answer) {
  const auto body = bodyOf(size + picture + verdict(Verdict::shown), Wanted::image);
  ASSERT_TRUE(body && std::holds_alternative<ImagePreview>(*body));
  const auto& preview = std::get<ImagePreview>(*body);
  EXPECT_EQ(preview.pixels, QSize(20, 10));
  EXPECT_EQ(preview.image.size(), QSize(2, 1));
  EXPECT_FALSE(preview.image.hasAlphaChannel());
  EXPECT_EQ(preview.image.pixel(1, 0), qRgb(6, 5, 4));
}

TEST(AnsweredBody, transparency_is_kept) {
  const auto body = bodyOf(size + ReaderAnswer::pictureHead(1, 1, false) + std::string(4, '\0') +
                               verdict(Verdict::shown),
                           Wanted::image);
  ASSERT_TRUE(body && std::holds_alternative<ImagePreview>(*body));
  EXPECT_TRUE(std::get<ImagePreview>(*body).image.hasAlphaChannel());
}

TEST(AnsweredBody, a_document_has_its_pages_and_their_count) {
  const auto body = bodyOf(
      ReaderAnswer::pagesPiece(9) + picture + picture + verdict(Verdict::shown), Wanted::document);
  ASSERT_TRUE(body && std::holds_alternative<PagesPreview>(*body));
  EXPECT_EQ(std::get<PagesPreview>(*body).count, 9);
  EXPECT_EQ(std::get<PagesPreview>(*body).pages.size(), 2U);
}

TEST(AnsweredBody, a_recording_has_its_facts) {
  const auto body =
      bodyOf(ReaderAnswer::factHead(4, 5) + "Title\xC3\xA9\xFF" + "x" + verdict(Verdict::shown),
             Wanted::mediaIfOne);
  ASSERT_TRUE(body && std::holds_alternative<MediaPreview>(*body));
  const auto& facts = std::get<MediaPreview>(*body).facts;
  ASSERT_EQ(facts.size(), 1U);
  EXPECT_EQ(facts[0].first, QStringLiteral("Titl"));
  EXPECT_EQ(facts[0].second, QStringLiteral("eé\uFFFDx"));
}

TEST(AnsweredBody, an_invalid_answer_means_a_damaged_file) {
  const std::string noise = "known incorrect sRGB profile";
  EXPECT_EQ(reasonIn(bodyOf(noise, Wanted::image)), "This image is damaged and cannot be shown.");
  EXPECT_EQ(reasonIn(bodyOf(noise, Wanted::document)),
            "This document is damaged and cannot be shown.");
  EXPECT_EQ(reasonIn(bodyOf(noise, Wanted::media)),
            "This recording is damaged and cannot be read.");
  EXPECT_EQ(reasonIn(bodyOf(noise, Wanted::mediaIfOne)), "facts only");
  // The verdict says that there is something to show, but there is no picture.
  EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::shown), Wanted::image)),
            "This image is damaged and cannot be shown.");
  EXPECT_EQ(reasonIn(bodyOf(picture + verdict(Verdict::shown), Wanted::image)),
            "This image is damaged and cannot be shown.");
  EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::shown), Wanted::document)),
            "This document is damaged and cannot be shown.");
  // The picture does not suit the request.
  EXPECT_EQ(reasonIn(bodyOf(picture + verdict(Verdict::shown), Wanted::media)),
            "This recording is damaged and cannot be read.");
}

TEST(AnsweredBody, the_end_of_a_process_without_an_answer_is_explained) {
  EXPECT_EQ(reasonIn(bodyOf("", Wanted::image)), "This image is damaged and cannot be shown.");
  for (const End end : {End::lack, End::late}) {
    EXPECT_EQ(reasonIn(bodyOf("", Wanted::image, end)), "This image is too large to be shown.");
  }
  EXPECT_EQ(reasonIn(bodyOf("", Wanted::document)),
            "This document is damaged and cannot be shown.");
  EXPECT_EQ(reasonIn(bodyOf("", Wanted::document, End::late)),
            "This document is damaged and cannot be shown.");
  EXPECT_EQ(reasonIn(bodyOf("", Wanted::document, End::lack)),
            "This document is too large to be shown.");
  EXPECT_EQ(reasonIn(bodyOf("", Wanted::media, End::late)),
            "This recording is damaged and cannot be read.");
}

TEST(AnsweredBody, pages_complete_before_the_end_are_shown) {
  for (const End end : {End::itself, End::lack, End::late}) {
    const auto body = bodyOf(ReaderAnswer::pagesPiece(9) + picture + picture.substr(0, 20),
                             Wanted::document, end);
    ASSERT_TRUE(body && std::holds_alternative<PagesPreview>(*body));
    EXPECT_EQ(std::get<PagesPreview>(*body).count, 9);
    EXPECT_EQ(std::get<PagesPreview>(*body).pages.size(), 1U);
  }
}

TEST(AnsweredBody, an_answer_over_the_limit_is_not_shown) {
  EXPECT_EQ(reasonIn(bodyOf(picture + picture, Wanted::document, End::overlong)),
            "This document is damaged and cannot be shown.");
}

TEST(AnsweredBody, every_verdict_has_a_text) {
  for (const Wanted wanted : all) {
    EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::nothing), wanted)), "facts only");
    EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::other), wanted)), "another kind of file");
    EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::gone), wanted)), "This file is no longer there.");
    EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::refused), wanted)),
              "You do not have permission to read this file.");
    EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::unread), wanted)), "This file cannot be read.");
  }
  EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::tooLarge), Wanted::image)),
            "This image is too large to be shown.");
  EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::damaged), Wanted::imageIfOne)),
            "This image is damaged and cannot be shown.");
  EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::tooLarge), Wanted::document)),
            "This document is too large to be shown.");
  EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::locked), Wanted::document)),
            "This document cannot be shown because it needs a password.");
  EXPECT_EQ(reasonIn(bodyOf(verdict(Verdict::encrypted), Wanted::document)),
            "This document is encrypted in a way that cannot be read here.");
}

TEST(AnsweredBody, a_program_that_cannot_start_has_a_text) {
  EXPECT_EQ(reasonIn(AnsweredBody::ofNone(Wanted::image)), "This image cannot be shown.");
  EXPECT_EQ(reasonIn(AnsweredBody::ofNone(Wanted::document)), "This document cannot be shown.");
  EXPECT_EQ(reasonIn(AnsweredBody::ofNone(Wanted::media)), "This recording cannot be read.");
  EXPECT_EQ(reasonIn(AnsweredBody::ofNone(Wanted::imageIfOne)), "another kind of file");
  EXPECT_EQ(reasonIn(AnsweredBody::ofNone(Wanted::mediaIfOne)), "another kind of file");
}

TEST(AnsweredBody, the_limit_fits_the_largest_answer_and_little_more) {
  PreviewLimits limits;
  EXPECT_GE(AnsweredBody::mostBytes(limits), 4U * 1600 * 1600);
  EXPECT_GE(AnsweredBody::mostBytes(limits),
            static_cast<std::size_t>(limits.pageBytes) + 4U * 1600 * 4 * 1600);
  EXPECT_LE(AnsweredBody::mostBytes(limits), std::size_t{256} << 20);
  limits.pixels = {-1, 2'000'000'000};
  limits.pageBytes = -1;
  EXPECT_LE(AnsweredBody::mostBytes(limits), std::size_t{4} << 20);
}

}  // namespace
}  // namespace tessaly
