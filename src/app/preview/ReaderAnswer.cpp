#include "app/preview/ReaderAnswer.h"

#include <cstring>

namespace tessaly {

namespace {

enum class Kind : std::uint32_t { size, pages, opaquePicture, clearPicture, fact, verdict };

// The head of each piece.
struct Head {
  Kind kind = Kind::size;
  std::int32_t first = 0;    // width, number of pages, length of a fact's name, or the verdict
  std::int32_t second = 0;   // height
  std::uint32_t length = 0;  // number of content bytes that follow
};

constexpr std::size_t mostFacts = 64;
constexpr std::uint32_t longestFact = 4096;

std::string bytesOf(const Head& head) {
  std::string bytes(sizeof head, '\0');
  std::memcpy(bytes.data(), &head, sizeof head);
  return bytes;
}

// Whether a piece with this head may follow in the answer.
bool fits(const Head& head, const ReaderAnswer& answer, const ReaderAnswer::Bounds& bounds) {
  if (answer.verdict) return false;
  switch (head.kind) {
    case Kind::size:
      return head.first > 0 && head.second > 0 && head.length == 0 && answer.width == 0;
    case Kind::pages:
      return head.first >= 0 && head.length == 0 && answer.pages == 0;
    case Kind::opaquePicture:
    case Kind::clearPicture:
      return answer.pictures.size() < bounds.pictures && head.first > 0 &&
             head.first <= bounds.width && head.second > 0 && head.second <= bounds.height &&
             head.length % 4 == 0 && head.length / 4 == std::int64_t{head.first} * head.second;
    case Kind::fact:
      return answer.facts.size() < mostFacts && head.length <= longestFact && head.first >= 0 &&
             std::int64_t{head.first} <= head.length;
    case Kind::verdict:
      return head.first >= 0 &&
             head.first <= static_cast<std::int32_t>(ReaderAnswer::Verdict::unread) &&
             head.length == 0;
  }
  return false;
}

void add(ReaderAnswer& answer, const Head& head, std::string_view content) {
  switch (head.kind) {
    case Kind::size:
      answer.width = head.first;
      answer.height = head.second;
      break;
    case Kind::pages:
      answer.pages = head.first;
      break;
    case Kind::fact: {
      const auto name = static_cast<std::size_t>(head.first);
      answer.facts.emplace_back(content.substr(0, name), content.substr(name));
      break;
    }
    case Kind::verdict:
      answer.verdict = static_cast<ReaderAnswer::Verdict>(head.first);
      break;
    case Kind::opaquePicture:
    case Kind::clearPicture:
      answer.pictures.push_back({.width = head.first,
                                 .height = head.second,
                                 .isOpaque = head.kind == Kind::opaquePicture,
                                 .pixels = content});
      break;
  }
}

}  // namespace

std::optional<ReaderAnswer> ReaderAnswer::of(std::string_view bytes, const Bounds& bounds) {
  ReaderAnswer answer;
  while (bytes.size() >= sizeof(Head)) {
    Head head;
    std::memcpy(&head, bytes.data(), sizeof head);
    if (!fits(head, answer, bounds)) return std::nullopt;
    bytes.remove_prefix(sizeof head);
    if (bytes.size() < head.length) return answer;
    add(answer, head, bytes.substr(0, head.length));
    bytes.remove_prefix(head.length);
  }
  // An incomplete piece means that the answer was interrupted.
  if (answer.verdict && !bytes.empty()) return std::nullopt;
  return answer;
}

std::string ReaderAnswer::sizePiece(std::int32_t width, std::int32_t height) {
  return bytesOf({.kind = Kind::size, .first = width, .second = height});
}

std::string ReaderAnswer::pagesPiece(std::int32_t count) {
  return bytesOf({.kind = Kind::pages, .first = count});
}

std::string ReaderAnswer::pictureHead(std::int32_t width, std::int32_t height, bool isOpaque) {
  return bytesOf({.kind = isOpaque ? Kind::opaquePicture : Kind::clearPicture,
                  .first = width,
                  .second = height,
                  .length = static_cast<std::uint32_t>(std::int64_t{4} * width * height)});
}

std::string ReaderAnswer::factHead(std::size_t name, std::size_t value) {
  return bytesOf({.kind = Kind::fact,
                  .first = static_cast<std::int32_t>(name),
                  .length = static_cast<std::uint32_t>(name + value)});
}

std::string ReaderAnswer::verdictPiece(Verdict verdict) {
  return bytesOf({.kind = Kind::verdict, .first = static_cast<std::int32_t>(verdict)});
}

}  // namespace tessaly
