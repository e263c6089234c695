#include "scan/Percent.h"

#include <algorithm>

#include "scan/Format.h"

namespace tessaly::Percent {

std::string cut(double percent) {
  // Not `<= 0`, so that NaN gives 0.
  const double limited = percent > 0 ? std::min(percent, 100.0) : 0;
  return std::to_string(static_cast<int>(limited)) + '%';
}

std::string rounded(double percent) {
  return Format::fixed(percent, 0) + '%';
}

}  // namespace tessaly::Percent
