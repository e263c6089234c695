#include "app/preview/pages/PageRenderer.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <QImage>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfDocumentRenderOptions>
#include <QSize>
#include <QSizeF>

namespace tessaly::PageRenderer {

namespace {

// A page of `points` at the width asked for; none for a page without a size.
std::optional<QSize> sizeOf(const QSizeF& points, int width) {
  if (!(points.width() > 0) || !(points.height() > 0)) return std::nullopt;
  const double ratio = points.height() / points.width();
  if (!std::isfinite(ratio)) return std::nullopt;
  const double pixels =
      ratio > PageSheets::tallest ? width * double{PageSheets::tallest} / ratio : width;
  return QSize(std::max(1, static_cast<int>(std::lround(pixels))),
               std::max(1, static_cast<int>(std::lround(pixels * ratio))));
}

// The renderer leaves the paper out.
QImage onWhite(const QImage& page) {
  QImage paper(page.size(), QImage::Format_RGB32);
  if (paper.isNull()) return paper;
  paper.fill(Qt::white);
  QPainter painter(&paper);
  painter.drawImage(0, 0, page);
  return paper;
}

template <class Value>
bool write(QIODevice& out, const Value& value) {
  return out.write(reinterpret_cast<const char*>(&value), sizeof value) == sizeof value;
}

// Rows of pixels of 32 bits have no gaps.
bool writeSheet(QIODevice& out, const QImage& page) {
  return write(out, PageSheets::Sheet{.width = page.width(), .height = page.height()}) &&
         out.write(reinterpret_cast<const char*>(page.constBits()), page.sizeInBytes()) ==
             page.sizeInBytes();
}

PageSheets::Outcome outcomeOf(QPdfDocument::Error error) {
  switch (error) {
    case QPdfDocument::Error::IncorrectPassword:
      return PageSheets::locked;
    case QPdfDocument::Error::UnsupportedSecurityScheme:
      return PageSheets::encrypted;
    default:
      return PageSheets::damaged;
  }
}

}  // namespace

PageSheets::Outcome render(QIODevice& document, QIODevice& out, const Limits& limits) {
  QPdfDocument pdf;
  pdf.load(&document);
  if (pdf.status() != QPdfDocument::Status::Ready) return outcomeOf(pdf.error());

  const int count = pdf.pageCount();
  if (!write(out, PageSheets::Beginning{.count = count})) return PageSheets::failed;
  QPdfDocumentRenderOptions options;
  options.setRenderFlags(QPdfDocumentRenderOptions::RenderFlag::Annotations);
  std::int64_t bytes = 0;
  int rendered = 0;
  for (int i = 0; i < std::min(count, limits.pages); ++i) {
    const std::optional<QSize> size = sizeOf(pdf.pagePointSize(i), limits.width);
    if (!size) break;
    bytes += std::int64_t{4} * size->width() * size->height();
    if (bytes > limits.bytes && i > 0) break;
    const QImage page = onWhite(pdf.render(i, *size, options));
    if (page.isNull()) break;
    if (!writeSheet(out, page)) return PageSheets::failed;
    ++rendered;
  }
  return rendered > 0 ? PageSheets::rendered : PageSheets::damaged;
}

}  // namespace tessaly::PageRenderer
