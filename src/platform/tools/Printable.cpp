#include "platform/tools/Printable.h"

#include "platform/UnicodeText.h"

namespace tessaly::tools {

namespace {

bool isHarmless(const UnicodeText::Scalar& scalar) {
  const bool isControl = scalar.value < 0x20 || (scalar.value >= 0x7F && scalar.value < 0xA0) ||
                         scalar.value == 0x2028 || scalar.value == 0x2029;
  return scalar.isText && !isControl && !UnicodeText::isDirectionControl(scalar.value);
}

}  // namespace

std::string printable(std::string_view text, std::size_t most) {
  std::string shown;
  for (std::size_t count = 0; !text.empty(); ++count) {
    if (count == most) return shown + "...";
    const UnicodeText::Scalar scalar = UnicodeText::firstScalar(text);
    if (isHarmless(scalar)) {
      shown += text.substr(0, scalar.length);
    } else {
      shown += '?';
    }
    text.remove_prefix(scalar.length);
  }
  return shown;
}

}  // namespace tessaly::tools
