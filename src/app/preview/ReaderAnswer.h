// The answer of the program that reads foreign formats: a sequence of pieces, with a verdict as the
// last one. The verdict is missing if the program was killed.
//
// A foreign file may have taken control of the program, so an answer with anything invalid or out
// of bounds is rejected. Numbers are in the machine's byte order, since both ends run on one
// machine. Pure, safe from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly {

struct ReaderAnswer {
  enum class Verdict : std::int32_t {
    shown,    // the preceding pieces are to be shown
    nothing,  // only the facts of the file can be shown
    other,    // it does not have the format that was only assumed
    damaged,
    tooLarge,
    locked,     // it needs a password
    encrypted,  // with an unknown encryption
    gone,       // another item has replaced it, or none
    refused,    // the user has no permission to read it
    unread,     // it cannot be read for another reason
  };

  // The exit status when memory is exhausted before there is an answer.
  static constexpr int outOfMemory = 3;

  struct Bounds {
    std::int32_t width = 0;  // pixels of a picture
    std::int32_t height = 0;
    std::size_t pictures = 0;
  };

  struct Picture {
    std::int32_t width = 0;  // pixels
    std::int32_t height = 0;
    bool isOpaque = true;
    // Rows of 32-bit pixels without padding, in the machine's byte order: alpha, red, green, blue,
    // with premultiplied alpha.
    std::string_view pixels;
  };

  std::optional<Verdict> verdict;  // absent if the answer was interrupted
  std::int32_t width = 0;          // of the image in the file, upright; 0 if unknown
  std::int32_t height = 0;
  std::int32_t pages = 0;  // the number of all pages of the document
  std::vector<Picture> pictures;
  std::vector<std::pair<std::string_view, std::string_view>> facts;  // names and values

  // Points into `bytes`. Absent if these are not a valid answer to a request with these bounds.
  static std::optional<ReaderAnswer> of(std::string_view bytes, const Bounds& bounds);

  // The pieces in their binary form. The heads of a picture and of a fact precede their content:
  // the pixels; the name and the value.
  static std::string sizePiece(std::int32_t width, std::int32_t height);
  static std::string pagesPiece(std::int32_t count);
  static std::string pictureHead(std::int32_t width, std::int32_t height, bool isOpaque);
  static std::string factHead(std::size_t name, std::size_t value);
  static std::string verdictPiece(Verdict verdict);
};

}  // namespace tessaly
