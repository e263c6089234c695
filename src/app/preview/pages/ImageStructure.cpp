#include "app/preview/pages/ImageStructure.h"

#include <cstdint>
#include <cstdlib>

#include <QByteArray>
#include <QtEndian>

namespace tessaly::ImageStructure {

namespace {

template <class Number>
Number numberAt(const QByteArray& bytes, qsizetype offset) {
  return qFromLittleEndian<Number>(bytes.constData() + offset);
}

// Skips the colour table that the flags of a GIF announce: three bytes per colour.
bool skipColors(QIODevice& file, unsigned char flags) {
  if ((flags & 0x80) == 0) return true;
  const qint64 length = 3LL << ((flags & 0x07) + 1);
  return file.skip(length) == length;
}

// Skips blocks, each preceded by its length, up to the empty block at the end.
bool skipBlocks(QIODevice& file) {
  char length = 0;
  while (file.getChar(&length)) {
    const auto count = static_cast<unsigned char>(length);
    if (count == 0) return true;
    if (file.skip(count) != count) return false;
  }
  return false;
}

}  // namespace

bool isCompleteBmp(QIODevice& file) {
  file.seek(0);
  const QByteArray head = file.read(34);
  if (head.size() < 26) return false;
  const bool isOld = numberAt<quint32>(head, 14) == 12;
  if (!isOld && head.size() < 34) return false;
  // The length of compressed rows is unknown; 3 and 6 are uncompressed with colour masks.
  const quint32 compression = isOld ? 0 : numberAt<quint32>(head, 30);
  if (compression != 0 && compression != 3 && compression != 6) return true;
  const std::int64_t width = isOld ? numberAt<quint16>(head, 18) : numberAt<qint32>(head, 18);
  const std::int64_t height = isOld ? numberAt<quint16>(head, 20) : numberAt<qint32>(head, 22);
  const std::int64_t bits = numberAt<quint16>(head, isOld ? 24 : 28);
  const std::int64_t row = (width * bits + 31) / 32 * 4;
  if (width <= 0 || row > (std::int64_t{1} << 31)) return true;
  return numberAt<quint32>(head, 10) + row * std::abs(height) <= file.size();
}

bool isCompleteGif(QIODevice& file) {
  constexpr unsigned char extension = 0x21;
  constexpr unsigned char image = 0x2C;
  file.seek(0);
  const QByteArray screen = file.read(13);
  if (screen.size() < 13 || !skipColors(file, static_cast<unsigned char>(screen[10]))) return false;
  char kind = 0;
  while (file.getChar(&kind)) {
    if (static_cast<unsigned char>(kind) == extension) {
      if (file.skip(1) != 1 || !skipBlocks(file)) return false;
    } else if (static_cast<unsigned char>(kind) == image) {
      const QByteArray frame = file.read(9);
      return frame.size() == 9 && skipColors(file, static_cast<unsigned char>(frame[8])) &&
             file.skip(1) == 1 && skipBlocks(file);
    } else {
      return true;
    }
  }
  return false;
}

}  // namespace tessaly::ImageStructure
