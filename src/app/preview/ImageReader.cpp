#include "app/preview/ImageReader.h"

#include <mutex>
#include <optional>

#include <QBuffer>
#include <QByteArray>
#include <QColorSpace>
#include <QImageIOHandler>
#include <QImageReader>

#include "app/preview/ImageStructure.h"
#include "app/preview/ItemDevice.h"
#include "app/preview/JpegStructure.h"
#include "app/preview/PreviewFailures.h"
#include "app/preview/SvgSource.h"

namespace tessaly::ImageReader {

namespace {

QByteArray nameOf(std::string_view format) {
  return {format.data(), static_cast<qsizetype>(format.size())};
}

bool isTurned(QImageIOHandler::Transformations transformation) {
  return transformation.testFlag(QImageIOHandler::TransformationRotate90);
}

std::int64_t pixelsOf(QSize size) {
  return std::int64_t{size.width()} * size.height();
}

// Within `limit`, in the same shape; never larger than it is.
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

// Memory for one image at its full size, where its reader cannot scale while it reads. It holds for
// the whole process.
void limitAllocation() {
  constexpr int mebibytes = 512;
  static std::once_flag once;
  std::call_once(once, [] { QImageReader::setAllocationLimit(mebibytes); });
}

// Of an allocation that the readers refuse, or of one that they are not asked to make.
bool isHuge(QSize size) {
  constexpr std::int64_t bytesAPixel = 4;
  return pixelsOf(size) * bytesAPixel > std::int64_t{QImageReader::allocationLimit()} << 20;
}

// As screens show it, and small in memory.
QImage shown(QImage image) {
  if (image.colorSpace().isValid()) image.convertToColorSpace(QColorSpace::SRgb);
  return std::move(image).convertToFormat(
      image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

PreviewBody readFrom(QIODevice& device, std::string_view format, const PreviewRequest& request) {
  limitAllocation();
  QImageReader reader(&device, nameOf(format));
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(true);
  if (format == "ico" || format == "icns") goToLargest(reader);

  const bool isSideways = isTurned(reader.transformation());
  QSize size = reader.size();
  const QSize limit = request.limits.pixels;
  if (size.isValid()) {
    reader.setScaledSize(within(size, isSideways ? limit.transposed() : limit));
  }
  QImage image = reader.read();
  if (request.isCancelled()) return FactsOnly{};
  if (image.isNull()) {
    return size.isValid() && isHuge(size) ? PreviewFailures::hugeImage()
                                          : PreviewFailures::damagedImage();
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

// Why the decoder should not be let loose on it.
std::optional<PreviewFailure> obstacleIn(QIODevice& file, std::string_view format) {
  bool isComplete = true;
  bool isInMemory = false;  // all of it, at its full size, when it is decoded
  if (format == "jpeg") {
    const JpegStructure structure = JpegStructure::of(file);
    isComplete = structure.isComplete;
    isInMemory = structure.isProgressive;
  } else if (format == "gif") {
    isComplete = ImageStructure::isCompleteGif(file);
  } else if (format == "bmp") {
    isComplete = ImageStructure::isCompleteBmp(file);
  }
  if (!isComplete) return PreviewFailures::damagedImage();
  file.seek(0);
  if (isInMemory && isHuge(QImageReader(&file, nameOf(format)).size())) {
    return PreviewFailures::hugeImage();
  }
  file.seek(0);
  return std::nullopt;
}

PreviewBody readSvg(const HeldItem& file, const PreviewRequest& request) {
  const PreviewLimits& limits = request.limits;
  if (file.facts().size > limits.svgFileBytes) return PreviewFailures::hugeImage();
  ItemDevice device(file, limits.svgFileBytes, request);
  const std::optional<QByteArray> source = SvgSource::harmless(device.readAll());
  if (request.isCancelled()) return FactsOnly{};
  if (!source) return PreviewFailures::damagedImage();
  QBuffer buffer;
  buffer.setData(*source);
  buffer.open(QIODevice::ReadOnly);
  return readFrom(buffer, "svg", request);
}

}  // namespace

bool canRead(const HeldItem& file, std::string_view format, const PreviewRequest& request) {
  ItemDevice device(file, request.limits.imageFileBytes, request);
  QImageReader reader(&device, nameOf(format));
  reader.setAutoDetectImageFormat(false);
  return reader.canRead();
}

PreviewBody read(const HeldItem& file, std::string_view format, const PreviewRequest& request) {
  if (!QImageReader::supportedImageFormats().contains(nameOf(format))) return FactsOnly{};
  if (format == "svg") return readSvg(file, request);
  const PreviewLimits& limits = request.limits;
  if (file.facts().size > limits.imageFileBytes) return PreviewFailures::hugeImage();
  // Some readers go over the file more than once.
  ItemDevice device(file, 4 * limits.imageFileBytes, request);
  const std::optional<PreviewFailure> obstacle = obstacleIn(device, format);
  if (request.isCancelled()) return FactsOnly{};
  if (obstacle) return *obstacle;
  return readFrom(device, format, request);
}

}  // namespace tessaly::ImageReader
