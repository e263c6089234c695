// The content of a file as a QIODevice for libraries. Once more bytes were read than the budget
// allows, every further read fails, so that no library reads for long.
//
// Use it on one thread only, within the lifetime of the item.
#pragma once

#include <cstdint>

#include <QIODevice>

#include "platform/HeldItem.h"

namespace tessaly {

class ItemDevice : public QIODevice {
 public:
  // The content of `item` is open; `budget` is in bytes. The device is open.
  ItemDevice(const HeldItem& item, std::int64_t budget);

  qint64 size() const override { return item_.facts().size; }
  bool seek(qint64 position) override;

 protected:
  qint64 readData(char* to, qint64 count) override;
  qint64 writeData(const char* from, qint64 count) override;

 private:
  const HeldItem& item_;
  std::int64_t left_;
  std::int64_t at_ = 0;
  bool isOver_ = false;
};

}  // namespace tessaly
