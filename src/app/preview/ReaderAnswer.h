// What the program that reads foreign formats answers: pieces, one after the other, and a verdict
// as the last of them. Where the program was ended in the middle, the verdict is missing.
//
// The program has been through a foreign file, which may have taken it over: whatever is not as it
// must be, or not within bounds, is no answer. Numbers are in the machine's own order, since both
// ends run on one machine. Pure, safe from any thread.
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
    shown,    // the pieces before are what there is to show
    nothing,  // there is nothing to show but that the file is there
    other,    // it is not what it was to be, if it was that
    damaged,
    tooLarge,
    locked,     // it needs a password
    encrypted,  // in a way that is not known
    gone,       // another item has taken its place, or none
    refused,    // the user may not read it
    unread,     // it cannot be read for another reason
  };

  // What the program returns when it has not answered for lack of memory.
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
    // Rows without gaps of 32-bit pixels in the machine's order: alpha, red, green, blue, with
    // alpha premultiplied.
    std::string_view pixels;
  };

  std::optional<Verdict> verdict;  // absent where the answer breaks off
  std::int32_t width = 0;          // of the image in the file, upright; 0 where it was not told
  std::int32_t height = 0;
  std::int32_t pages = 0;  // of the document, all of them
  std::vector<Picture> pictures;
  std::vector<std::pair<std::string_view, std::string_view>> facts;  // names and values

  // Points into `bytes`. None for what is no answer, and none of one.
  static std::optional<ReaderAnswer> of(std::string_view bytes, const Bounds& bounds);

  // The pieces as they are written. Those of a picture and of a fact go before their content: the
  // pixels; the name and the value.
  static std::string sizePiece(std::int32_t width, std::int32_t height);
  static std::string pagesPiece(std::int32_t count);
  static std::string pictureHead(std::int32_t width, std::int32_t height, bool isOpaque);
  static std::string factHead(std::size_t name, std::size_t value);
  static std::string verdictPiece(Verdict verdict);
};

}  // namespace tessaly
