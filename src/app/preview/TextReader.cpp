#include "app/preview/TextReader.h"

#include <string>
#include <utility>

#include "app/preview/PreviewFailures.h"
#include "app/preview/TextDecoding.h"

namespace tessaly::TextReader {

namespace {

// One byte more than the limit tells whether there is more. Files of the system tell no length, so
// what ends a file is a read that brings nothing.
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
