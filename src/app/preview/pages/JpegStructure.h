// Facts from the markers of a JPEG file, before it is decoded: decoders fill a truncated file with
// grey, and some files need far more memory for decoding than their picture does.
//
// Runs on the calling thread, which should be a worker: the whole file is read.
#pragma once

#include <QIODevice>

namespace tessaly {

struct JpegStructure {
  bool isComplete = false;     // it has the marker for the end of the picture
  bool isProgressive = false;  // decoding needs the whole picture in memory

  // Reads from the device's beginning.
  static JpegStructure of(QIODevice& file);
};

}  // namespace tessaly
