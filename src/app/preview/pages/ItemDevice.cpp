#include "app/preview/pages/ItemDevice.h"

#include <algorithm>
#include <cstddef>

namespace tessaly {

ItemDevice::ItemDevice(const HeldItem& item, std::int64_t budget) : item_(item), left_(budget) {
  open(QIODevice::ReadOnly);
}

bool ItemDevice::seek(qint64 position) {
  if (!QIODevice::seek(position)) return false;
  at_ = position;
  return true;
}

qint64 ItemDevice::readData(char* to, qint64 count) {
  qint64 done = 0;
  while (done < count) {
    isOver_ = isOver_ || left_ <= 0;
    if (isOver_) break;
    const Result<std::size_t> length =
        item_.read(at_, to + done, static_cast<std::size_t>(std::min<qint64>(count - done, left_)));
    isOver_ = !length;
    if (isOver_ || length.value() == 0) break;
    const auto read = static_cast<qint64>(length.value());
    done += read;
    at_ += read;
    left_ -= read;
  }
  return done == 0 && isOver_ ? -1 : done;
}

qint64 ItemDevice::writeData(const char* /*from*/, qint64 /*count*/) {
  return -1;
}

}  // namespace tessaly
