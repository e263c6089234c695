#include "app/preview/TextReader.h"

#include <string>
#include <utility>

#include "app/preview/PreviewFailures.h"
#include "app/preview/TextDecoding.h"

namespace tessaly::TextReader {

namespace {

// One byte over the limit shows whether there is more. Kernel files report no length, so a read
// without data marks the end.
Result<std::string> beginning(const HeldItem& file, std::size_t limit,
                              const PreviewRequest& request) {
  std::string bytes(limit + 1, '\0');
  std::size_t length = 0;
  while (length < bytes.size() && !request.isCancelled()) {
    const Result<std::size_t> more =
        file.read(static_cast<std::int64_t>(length), bytes.data() + length, bytes.size() - length);
    if (!more) return more.error();
    if (more.value() == 0) break;
    length += more.value();
  }
  bytes.resize(length);
  return bytes;
}

}  // namespace

std::optional<PreviewBody> read(const HeldItem& file, const PreviewRequest& request) {
  const PreviewLimits& limits = request.limits;
  const Result<std::string> bytes = beginning(file, limits.textBytes, request);
  if (request.isCancelled()) return FactsOnly{};
  if (!bytes) return PreviewFailures::of(bytes.error(), false);
  const bool isWhole = bytes.value().size() <= limits.textBytes;
  const std::optional<TextDecoding::Text> text =
      TextDecoding::decoded(std::string_view(bytes.value()).substr(0, limits.textBytes), isWhole,
                            {.lines = limits.textLines, .lineLength = limits.lineLength});
  if (!text) return std::nullopt;
  return TextPreview{.text = QString::fromStdU16String(text->units), .isWhole = text->isWhole};
}

}  // namespace tessaly::TextReader
