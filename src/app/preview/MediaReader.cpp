#include "app/preview/MediaReader.h"

#include "app/preview/MediaFacts.h"
#include "app/preview/MediaInput.h"
#include "app/preview/PreviewFailures.h"

namespace tessaly::MediaReader {

namespace {

PreviewBody readOr(PreviewBody otherwise, const HeldItem& file, const PreviewRequest& request) {
  const MediaInput input(file, request);
  if (request.isCancelled()) return FactsOnly{};
  if (input.format() == nullptr) return otherwise;
  return MediaFacts::of(*input.format());
}

}  // namespace

PreviewBody read(const HeldItem& file, const PreviewRequest& request) {
  return readOr(PreviewFailures::damagedMedia(), file, request);
}

std::optional<PreviewBody> readUnsigned(const HeldItem& file, const PreviewRequest& request) {
  if (!MediaInput::isKnown(file)) return std::nullopt;
  return readOr(FactsOnly{}, file, request);
}

}  // namespace tessaly::MediaReader
