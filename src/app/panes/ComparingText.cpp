#include "app/panes/ComparingText.h"

#include <cstddef>
#include <string>
#include <string_view>

#include "scan/Format.h"

namespace tessaly {

namespace {

std::string withoutZero(std::string number) {
  constexpr std::string_view zero = ".0";
  if (number.ends_with(zero)) number.resize(number.size() - zero.size());
  return number;
}

// The number of bytes in `unit`.
double bytesIn(std::string_view unit) {
  double bytes = 1;
  for (const std::string_view smaller : {"B", "KB", "MB", "GB", "TB", "PB"}) {
    if (smaller == unit) break;
    bytes *= 1024;
  }
  return bytes;
}

}  // namespace

QString ComparingText::of(const DuplicateProgress& progress) {
  const std::string whole = Format::bytes(progress.byteCount);
  const std::size_t blank = whole.find(' ');
  const std::string unit = whole.substr(blank + 1);
  const double done = static_cast<double>(progress.bytes) / bytesIn(unit);
  return QStringLiteral("Comparing %1 of %2 · %3 of %4 %5")
      .arg(QString::number(progress.files),
           QString::fromStdString(Format::counted(progress.fileCount, "file")),
           QString::fromStdString(withoutZero(Format::fixed(done, 1))),
           QString::fromStdString(withoutZero(whole.substr(0, blank))),
           QString::fromStdString(unit));
}

}  // namespace tessaly
