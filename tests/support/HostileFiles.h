// Files that are made to keep a program busy, to take its memory or to make it complain, and small
// good ones of the same kinds.
#pragma once

#include <string>

namespace tessaly::HostileFiles {

// SVG: one stroked path of so many segments that drawing it takes half a minute.
std::string slowDrawing();

// PDF: a page with `content`, in which "/F Do" draws a form that is in turn `form`.
std::string document(const std::string& content, const std::string& form = {});
// The form draws itself, twice.
std::string documentThatDrawsItself();

// JPEG: a progressive one, 1,024 pixels wide and high, of so many scans, each of which goes over
// the whole picture.
std::string photographOfScans(int scans);

// PNG: of so many pixels, as its header says; there are none in it.
std::string pngOf(unsigned width, unsigned height);
// A good one with a colour profile that is none, of which its library complains.
std::string pngThatIsComplainedOf();

// WAV: a second of silence.
std::string sound();

}  // namespace tessaly::HostileFiles
