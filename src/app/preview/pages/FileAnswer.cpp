#include "app/preview/pages/FileAnswer.h"

#include "app/preview/pages/ImageReader.h"
#include "app/preview/pages/MediaReader.h"
#include "app/preview/pages/PageRenderer.h"

namespace tessaly::FileAnswer {

namespace {

using Verdict = ReaderAnswer::Verdict;
using Wanted = ReaderRequest::Wanted;

Verdict verdictOf(const SystemError& error) {
  switch (error.kind) {
    case SystemError::Kind::notFound:
    case SystemError::Kind::notADirectory:
      return Verdict::gone;
    case SystemError::Kind::notPermitted:
      return Verdict::refused;
    default:
      return Verdict::unread;
  }
}

Decoded imageOf(const HeldItem& file, const ReaderRequest& request) {
  if (request.wanted == Wanted::imageIfOne &&
      !ImageReader::canRead(file, request.format, request.limits)) {
    return Verdict::other;
  }
  return ImageReader::read(file, request.format, request.limits);
}

void writeFile(const HeldItem& file, const ReaderRequest& request, AnswerWriter& answer) {
  switch (request.wanted) {
    case Wanted::image:
    case Wanted::imageIfOne:
      answer.write(imageOf(file, request));
      break;
    case Wanted::document:
      PageRenderer::render(file, answer, request.limits);
      break;
    case Wanted::media:
      answer.write(MediaReader::read(file, request.limits));
      break;
    case Wanted::mediaIfOne:
      answer.write(MediaReader::readUnsigned(file, request.limits));
      break;
  }
}

}  // namespace

// Only files are opened, and only the requested one.
void write(const ReaderRequest& request, AnswerWriter& answer) {
  Result<HeldItem> item = HeldItem::itself(request.path);
  if (!item) {
    answer.writeVerdict(verdictOf(item.error()));
    return;
  }
  HeldItem& file = item.value();
  if (file.facts().type != HeldItem::Type::file || file.facts().identity != request.identity) {
    answer.writeVerdict(Verdict::gone);
    return;
  }
  if (const Outcome opened = file.openContent(); !opened) {
    answer.writeVerdict(verdictOf(opened.error()));
    return;
  }
  writeFile(file, request, answer);
}

}  // namespace tessaly::FileAnswer
