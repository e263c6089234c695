// How the program that renders documents answers: with how it ended, and with a file of sheets, one
// a page that it has rendered. The file begins with the count of all pages. Both ends run on one
// machine, so numbers are in its own order.
#pragma once

#include <cstdint>

namespace tessaly::PageSheets {

// The name of the program. Its arguments: the paths of the document and of the file to write, the
// width of a page in pixels, the most pages, and the most bytes of all of them.
inline constexpr const char* program = "tessaly-pages";

// What it returns.
enum Outcome : int {
  rendered = 0,
  failed = 1,  // it could not begin
  damaged = 10,
  locked = 11,     // it needs a password
  encrypted = 12,  // in a way that is not known
};

struct Beginning {
  std::int32_t count = 0;  // of all pages of the document
};

// Rows of 32-bit pixels follow, without gaps, as QImage::Format_RGB32 has them.
struct Sheet {
  std::int32_t width = 0;  // pixels
  std::int32_t height = 0;
};

// No page is taller than so many times its width.
inline constexpr int tallest = 4;

}  // namespace tessaly::PageSheets
