#include "app/preview/pages/JpegStructure.h"

#include <array>
#include <cstddef>

namespace tessaly {

namespace {

// Markers from ITU-T T.81, table B.1.
enum Marker : unsigned char {
  temporary = 0x01,
  progressiveFrame = 0xC2,
  firstRestart = 0xD0,
  lastRestart = 0xD7,
  startOfImage = 0xD8,
  endOfImage = 0xD9,
  startOfScan = 0xDA,
};

class Reader {
 public:
  explicit Reader(QIODevice& file) : file_(file) {}

  // The next byte, or -1 at the end.
  int next() {
    if (at_ == length_) {
      length_ = file_.read(buffer_.data(), static_cast<qint64>(buffer_.size()));
      at_ = 0;
      if (length_ <= 0) {
        length_ = 0;
        return -1;
      }
    }
    return static_cast<unsigned char>(buffer_[static_cast<std::size_t>(at_++)]);
  }

  // Finds the next marker. In the data of a scan, 0xFF is followed by a zero byte or a restart
  // marker.
  int nextMarker() {
    for (int byte = next(); byte >= 0; byte = next()) {
      if (byte != 0xFF) continue;
      while (byte == 0xFF) byte = next();
      if (byte > temporary && (byte < firstRestart || byte > lastRestart)) return byte;
    }
    return -1;
  }

  // Skips the segment of a marker by the length at its beginning.
  bool skipSegment() {
    const int high = next();
    const int low = next();
    if (high < 0 || low < 0) return false;
    for (int left = high * 256 + low - 2; left > 0; --left) {
      if (next() < 0) return false;
    }
    return true;
  }

 private:
  QIODevice& file_;
  std::array<char, 16384> buffer_;
  qint64 length_ = 0;
  qint64 at_ = 0;
};

}  // namespace

JpegStructure JpegStructure::of(QIODevice& file) {
  JpegStructure structure;
  file.seek(0);
  Reader reader(file);
  bool hasScan = false;
  for (int marker = reader.nextMarker(); marker >= 0; marker = reader.nextMarker()) {
    if (marker == startOfImage) continue;
    if (marker == endOfImage) {
      structure.isComplete = hasScan;
      break;
    }
    if (marker == startOfScan) hasScan = true;
    if (marker == progressiveFrame) structure.isProgressive = true;
    if (!reader.skipSegment()) break;
  }
  return structure;
}

}  // namespace tessaly
