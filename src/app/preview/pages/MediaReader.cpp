#include "app/preview/pages/MediaReader.h"

#include "app/preview/pages/MediaFacts.h"
#include "app/preview/pages/MediaInput.h"

namespace tessaly::MediaReader {

namespace {

using Verdict = ReaderAnswer::Verdict;

Decoded readOr(Verdict otherwise, const HeldItem& file, const PreviewLimits& limits) {
  const MediaInput input(file, limits.mediaBytes);
  if (input.format() == nullptr) return otherwise;
  return MediaFacts::of(*input.format());
}

}  // namespace

Decoded read(const HeldItem& file, const PreviewLimits& limits) {
  return readOr(Verdict::damaged, file, limits);
}

Decoded readUnsigned(const HeldItem& file, const PreviewLimits& limits) {
  return MediaInput::isKnown(file) ? readOr(Verdict::nothing, file, limits) : Verdict::other;
}

}  // namespace tessaly::MediaReader
