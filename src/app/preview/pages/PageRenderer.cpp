#include "app/preview/pages/PageRenderer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include <QImage>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfDocumentRenderOptions>
#include <QSize>
#include <QSizeF>

#include "app/preview/pages/ItemDevice.h"

namespace tessaly::PageRenderer {

namespace {

using Verdict = ReaderAnswer::Verdict;

// The size in pixels of a page of `points` with this width; absent for an empty page.
std::optional<QSize> sizeOf(const QSizeF& points, int width) {
  if (!(points.width() > 0) || !(points.height() > 0)) return std::nullopt;
  const double ratio = points.height() / points.width();
  if (!std::isfinite(ratio)) return std::nullopt;
  const double pixels = ratio > PreviewLimits::tallestPage
                            ? width * double{PreviewLimits::tallestPage} / ratio
                            : width;
  return QSize(std::max(1, static_cast<int>(std::lround(pixels))),
               std::max(1, static_cast<int>(std::lround(pixels * ratio))));
}

// The renderer leaves the background transparent.
QImage onWhite(const QImage& page) {
  QImage paper(page.size(), QImage::Format_RGB32);
  if (paper.isNull()) return paper;
  paper.fill(Qt::white);
  QPainter painter(&paper);
  painter.drawImage(0, 0, page);
  return paper;
}

Verdict verdictOf(QPdfDocument::Error error) {
  switch (error) {
    case QPdfDocument::Error::IncorrectPassword:
      return Verdict::locked;
    case QPdfDocument::Error::UnsupportedSecurityScheme:
      return Verdict::encrypted;
    default:
      return Verdict::damaged;
  }
}

Verdict rendered(const HeldItem& file, AnswerWriter& answer, const PreviewLimits& limits) {
  if (file.facts().size > limits.documentBytes) return Verdict::tooLarge;
  // The renderer reads at random positions, some of them repeatedly.
  ItemDevice device(file, std::numeric_limits<std::int64_t>::max());
  QPdfDocument pdf;
  pdf.load(&device);
  if (pdf.status() != QPdfDocument::Status::Ready) return verdictOf(pdf.error());

  const int count = pdf.pageCount();
  if (!answer.writePages(count)) return Verdict::unread;
  QPdfDocumentRenderOptions options;
  options.setRenderFlags(QPdfDocumentRenderOptions::RenderFlag::Annotations);
  std::int64_t bytes = 0;
  int written = 0;
  for (int i = 0; i < std::min(count, limits.pages); ++i) {
    const std::optional<QSize> size = sizeOf(pdf.pagePointSize(i), limits.pixels.width());
    if (!size) break;
    bytes += std::int64_t{4} * size->width() * size->height();
    if (bytes > limits.pageBytes && i > 0) break;
    const QImage page = onWhite(pdf.render(i, *size, options));
    if (page.isNull() || !answer.writePicture(page)) break;
    ++written;
  }
  return written > 0 ? Verdict::shown : Verdict::damaged;
}

}  // namespace

void render(const HeldItem& file, AnswerWriter& answer, const PreviewLimits& limits) {
  answer.writeVerdict(rendered(file, answer, limits));
}

}  // namespace tessaly::PageRenderer
