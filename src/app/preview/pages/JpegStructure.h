// What the markers of a JPEG file tell before it is decoded: decoders go on with grey where the
// file ends too early, and some files take far more memory to decode than their picture does.
//
// On the calling thread, which should be a worker: the whole file is read.
#pragma once

#include <QIODevice>

namespace tessaly {

struct JpegStructure {
  bool isComplete = false;     // its picture has an end
  bool isProgressive = false;  // all of it must be in memory at once to be decoded

  // Read from the device's beginning.
  static JpegStructure of(QIODevice& file);
};

}  // namespace tessaly
