#include "system/DfTable.h"

#include <string>

#include "platform/UnicodeText.h"
#include "system/ToolOutput.h"

namespace tessaly::DfTable {

bool isHeader(std::string_view line) {
  return UnicodeText::lowercased(line).starts_with("filesystem");
}

std::optional<std::int64_t> bytes(std::string_view kibibytes) {
  const std::optional<std::int64_t> count = ToolOutput::integer(kibibytes);
  std::int64_t product = 0;
  if (!count || __builtin_mul_overflow(*count, 1024, &product)) return std::nullopt;
  return product;
}

double percent(std::string_view text) {
  std::string digits(text);
  std::erase(digits, '%');
  return ToolOutput::number(digits).value_or(0);
}

}  // namespace tessaly::DfTable
