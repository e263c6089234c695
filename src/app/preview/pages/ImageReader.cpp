#include "app/preview/pages/ImageReader.h"

#include <optional>

#include <QBuffer>
#include <QByteArray>
#include <QColorSpace>
#include <QImageIOHandler>
#include <QImageReader>

#include "app/preview/pages/ImageStructure.h"
#include "app/preview/pages/ItemDevice.h"
#include "app/preview/pages/JpegStructure.h"
#include "app/preview/pages/SvgSource.h"

namespace tessaly::ImageReader {

namespace {

using Verdict = ReaderAnswer::Verdict;

QByteArray nameOf(std::string_view format) {
  return {format.data(), static_cast<qsizetype>(format.size())};
}

bool isTurned(QImageIOHandler::Transformations transformation) {
  return transformation.testFlag(QImageIOHandler::TransformationRotate90);
}

std::int64_t pixelsOf(QSize size) {
  return std::int64_t{size.width()} * size.height();
}

// `size` scaled down to fit `limit`, with its aspect ratio; never scaled up.
QSize within(QSize size, QSize limit) {
  if (size.width() <= limit.width() && size.height() <= limit.height()) return size;
  return size.scaled(limit, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

void goToLargest(QImageReader& reader) {
  int largest = 0;
  std::int64_t most = 0;
  for (int i = 0; i < reader.imageCount() && reader.jumpToImage(i); ++i) {
    if (pixelsOf(reader.size()) > most) {
      most = pixelsOf(reader.size());
      largest = i;
    }
  }
  reader.jumpToImage(largest);
}

// Whether an image of this size needs more memory than the readers may allocate.
bool isHuge(QSize size) {
  constexpr std::int64_t bytesAPixel = 4;
  return pixelsOf(size) * bytesAPixel > std::int64_t{QImageReader::allocationLimit()} << 20;
}

// In the colour space and the format of screens.
QImage shown(QImage image) {
  if (image.colorSpace().isValid()) image.convertToColorSpace(QColorSpace::SRgb);
  return std::move(image).convertToFormat(
      image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

Decoded readFrom(QIODevice& device, std::string_view format, const PreviewLimits& limits) {
  QImageReader reader(&device, nameOf(format));
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(true);
  if (format == "ico" || format == "icns") goToLargest(reader);

  const bool isSideways = isTurned(reader.transformation());
  QSize size = reader.size();
  const QSize limit = limits.pixels;
  if (size.isValid()) {
    reader.setScaledSize(within(size, isSideways ? limit.transposed() : limit));
  }
  QImage image = reader.read();
  if (image.isNull()) {
    return size.isValid() && isHuge(size) ? Verdict::tooLarge : Verdict::damaged;
  }
  if (!size.isValid()) {
    size = image.size();
  } else if (isSideways) {
    size.transpose();
  }
  if (const QSize fit = within(image.size(), limit); fit != image.size()) {
    image = image.scaled(fit, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  return ImagePreview{.image = shown(std::move(image)), .pixels = size};
}

// Why the decoder must not read the file.
std::optional<Verdict> obstacleIn(QIODevice& file, std::string_view format) {
  bool isComplete = true;
  bool isInMemory = false;  // decoding needs the whole image in memory, at its full size
  if (format == "jpeg") {
    const JpegStructure structure = JpegStructure::of(file);
    isComplete = structure.isComplete;
    isInMemory = structure.isProgressive;
  } else if (format == "gif") {
    isComplete = ImageStructure::isCompleteGif(file);
  } else if (format == "bmp") {
    isComplete = ImageStructure::isCompleteBmp(file);
  }
  if (!isComplete) return Verdict::damaged;
  file.seek(0);
  if (isInMemory && isHuge(QImageReader(&file, nameOf(format)).size())) {
    return Verdict::tooLarge;
  }
  file.seek(0);
  return std::nullopt;
}

Decoded readSvg(const HeldItem& file, const PreviewLimits& limits) {
  if (file.facts().size > limits.svgFileBytes) return Verdict::tooLarge;
  ItemDevice device(file, limits.svgFileBytes);
  const std::optional<QByteArray> source = SvgSource::harmless(device.readAll());
  if (!source) return Verdict::damaged;
  QBuffer buffer;
  buffer.setData(*source);
  buffer.open(QIODevice::ReadOnly);
  return readFrom(buffer, "svg", limits);
}

}  // namespace

void limitAllocation() {
  constexpr int mebibytes = 512;
  QImageReader::setAllocationLimit(mebibytes);
}

bool canRead(const HeldItem& file, std::string_view format, const PreviewLimits& limits) {
  ItemDevice device(file, limits.imageFileBytes);
  QImageReader reader(&device, nameOf(format));
  reader.setAutoDetectImageFormat(false);
  return reader.canRead();
}

Decoded read(const HeldItem& file, std::string_view format, const PreviewLimits& limits) {
  if (!QImageReader::supportedImageFormats().contains(nameOf(format))) return Verdict::nothing;
  if (format == "svg") return readSvg(file, limits);
  if (file.facts().size > limits.imageFileBytes) return Verdict::tooLarge;
  // Some decoders read the file more than once.
  ItemDevice device(file, 4 * limits.imageFileBytes);
  if (const std::optional<Verdict> obstacle = obstacleIn(device, format)) return *obstacle;
  return readFrom(device, format, limits);
}

}  // namespace tessaly::ImageReader
