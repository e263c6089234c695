// Files that make a program busy, use up its memory or make it print warnings, and small good ones
// of the same formats.
#pragma once

#include <string>

namespace tessaly::HostileFiles {

// SVG: one stroked path with so many segments that drawing it takes half a minute.
std::string slowDrawing();

// PDF: a page with `content`, in which "/F Do" draws a form with the content `form`.
std::string document(const std::string& content, const std::string& form = {});
// A form that draws itself twice.
std::string documentThatDrawsItself();

// JPEG: progressive, 1,024 pixels wide and high, with this number of scans of the whole picture.
std::string photographOfScans(int scans);

// PNG: its header promises this many pixels, and there are none.
std::string pngOf(unsigned width, unsigned height);
// A good picture with an invalid colour profile, of which its library warns.
std::string pngThatIsComplainedOf();

// WAV: a second of silence.
std::string sound();

}  // namespace tessaly::HostileFiles
