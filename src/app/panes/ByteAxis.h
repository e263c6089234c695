// An axis of sizes with a few round values in one unit. Pure.
#pragma once

#include <cstdint>
#include <vector>

#include <QString>

namespace tessaly {

class ByteAxis {
 public:
  struct Level {
    double bytes = 0;
    QString text;  // "405.5 GB"
  };

  // Contains both sizes, of which `least` is the smaller one. Its length is at least a fiftieth of
  // `most`, so that small changes look small.
  ByteAxis(std::int64_t least, std::int64_t most);

  double low() const { return levels_.front().bytes; }
  double high() const { return levels_.back().bytes; }
  // At least two, from low() to high().
  const std::vector<Level>& levels() const { return levels_; }

 private:
  std::vector<Level> levels_;
};

}  // namespace tessaly
