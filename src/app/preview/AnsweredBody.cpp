#include "app/preview/AnsweredBody.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

#include "app/preview/PreviewFailures.h"
#include "app/preview/ReaderAnswer.h"

namespace tessaly::AnsweredBody {

namespace {

using Verdict = ReaderAnswer::Verdict;
using Wanted = ReaderRequest::Wanted;

// A request whose limits leave no space for a picture allows none in the answer.
ReaderAnswer::Bounds boundsOf(Wanted wanted, const PreviewLimits& limits) {
  const QSize most = limits.pixels;
  switch (wanted) {
    case Wanted::image:
    case Wanted::imageIfOne:
      return {.width = most.width(), .height = most.height(), .pictures = 1};
    case Wanted::document:
      return {.width = most.width(),
              .height = PreviewLimits::tallestPage * most.width(),
              .pictures = static_cast<std::size_t>(std::max(limits.pages, 0))};
    case Wanted::media:
    case Wanted::mediaIfOne:
      break;
  }
  return {};
}

QImage imageOf(const ReaderAnswer::Picture& picture) {
  QImage image(picture.width, picture.height,
               picture.isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
  if (!image.isNull()) std::memcpy(image.bits(), picture.pixels.data(), picture.pixels.size());
  return image;
}

QString textOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

PreviewBody damaged(Wanted wanted) {
  switch (wanted) {
    case Wanted::image:
    case Wanted::imageIfOne:
      return PreviewFailures::damagedImage();
    case Wanted::document:
      return PreviewFailures::damagedDocument();
    case Wanted::media:
      return PreviewFailures::damagedMedia();
    case Wanted::mediaIfOne:
      break;
  }
  return FactsOnly{};
}

PreviewBody tooLarge(Wanted wanted) {
  switch (wanted) {
    case Wanted::image:
    case Wanted::imageIfOne:
      return PreviewFailures::hugeImage();
    case Wanted::document:
      return PreviewFailures::hugeDocument();
    case Wanted::media:
    case Wanted::mediaIfOne:
      break;
  }
  return damaged(wanted);
}

PreviewBody shownImage(const ReaderAnswer& answer) {
  QImage image = answer.pictures.size() == 1 ? imageOf(answer.pictures.front()) : QImage();
  if (image.isNull() || answer.width == 0) return PreviewFailures::damagedImage();
  return ImagePreview{.image = std::move(image), .pixels = {answer.width, answer.height}};
}

PreviewBody shownPages(const ReaderAnswer& answer) {
  PagesPreview preview;
  for (const ReaderAnswer::Picture& picture : answer.pictures) {
    preview.pages.push_back(imageOf(picture));
    if (preview.pages.back().isNull()) return PreviewFailures::hugeDocument();
  }
  preview.count = std::max(answer.pages, static_cast<std::int32_t>(preview.pages.size()));
  return preview;
}

PreviewBody shown(const ReaderAnswer& answer, Wanted wanted) {
  switch (wanted) {
    case Wanted::image:
    case Wanted::imageIfOne:
      return shownImage(answer);
    case Wanted::document:
      return answer.pictures.empty() ? damaged(wanted) : shownPages(answer);
    case Wanted::media:
    case Wanted::mediaIfOne:
      break;
  }
  MediaPreview preview;
  for (const auto& [name, value] : answer.facts) {
    preview.facts.emplace_back(textOf(name), textOf(value));
  }
  return preview;
}

// Pages that were complete before the end are shown. A document without any is damaged, whatever
// the reason; an image then takes too many resources.
PreviewBody brokenOff(const ReaderAnswer& answer, End end, Wanted wanted) {
  const bool isDocument = wanted == Wanted::document;
  if (isDocument && !answer.pictures.empty()) return shownPages(answer);
  const bool asksTooMuch = end == End::lack || (end == End::late && !isDocument);
  return asksTooMuch ? tooLarge(wanted) : damaged(wanted);
}

PreviewBody systemFailure(int code) {
  return PreviewFailures::of(SystemError::fromErrno(code, ""), false);
}

}  // namespace

std::optional<PreviewBody> of(const std::string& answer, End end, Wanted wanted,
                              const PreviewLimits& limits) {
  const std::optional<ReaderAnswer> parsed = ReaderAnswer::of(answer, boundsOf(wanted, limits));
  if (!parsed || end == End::overlong) return damaged(wanted);
  if (!parsed->verdict) return brokenOff(*parsed, end, wanted);
  switch (*parsed->verdict) {
    case Verdict::shown:
      return shown(*parsed, wanted);
    case Verdict::nothing:
      return FactsOnly{};
    case Verdict::other:
      return std::nullopt;
    case Verdict::damaged:
      return damaged(wanted);
    case Verdict::tooLarge:
      return tooLarge(wanted);
    case Verdict::locked:
      return PreviewFailures::lockedDocument();
    case Verdict::encrypted:
      return PreviewFailures::foreignDocument();
    case Verdict::gone:
      return systemFailure(ENOENT);
    case Verdict::refused:
      return systemFailure(EACCES);
    case Verdict::unread:
      return systemFailure(EIO);
  }
  return damaged(wanted);
}

std::optional<PreviewBody> ofNone(Wanted wanted) {
  switch (wanted) {
    case Wanted::image:
      return PreviewFailures::unshownImage();
    case Wanted::document:
      return PreviewFailures::unshownDocument();
    case Wanted::media:
      return PreviewFailures::unreadMedia();
    case Wanted::imageIfOne:
    case Wanted::mediaIfOne:
      break;
  }
  return std::nullopt;
}

// The first page is rendered in spite of the limit.
std::size_t mostBytes(const PreviewLimits& limits) {
  constexpr std::int64_t besidesPixels = 1 << 20;
  constexpr std::int64_t bytesAPixel = 4;
  const std::int64_t width = std::clamp(limits.pixels.width(), 0, 1 << 15);
  const std::int64_t height = std::clamp(limits.pixels.height(), 0, 1 << 15);
  const std::int64_t image = bytesAPixel * width * height;
  const std::int64_t page = bytesAPixel * width * width * PreviewLimits::tallestPage;
  const std::int64_t pages = std::max<std::int64_t>(limits.pageBytes, 0) + page;
  return static_cast<std::size_t>(std::max(image, pages) + besidesPixels);
}

}  // namespace tessaly::AnsweredBody
