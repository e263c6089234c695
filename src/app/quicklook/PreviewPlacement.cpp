#include "app/quicklook/PreviewPlacement.h"

#include <algorithm>
#include <iterator>

namespace tessaly::PreviewPlacement {

namespace {

constexpr int readingWidth = 720;  // text, and content not known yet
constexpr int listingWidth = 560;
constexpr int statingWidth = 520;  // facts
constexpr int usualHeight = 640;

// Approximately the layout of the views; the difference is scrolled or left empty.
constexpr int lineHeight = 20;
constexpr qsizetype lineLength = 92;  // characters before a line is wrapped
constexpr int itemHeight = 28;
constexpr int factHeight = 24;
constexpr int headlineHeight = 240;
constexpr int widestPage = 900;
constexpr int listMargin = 14;

const QSize aroundPicture(2 * pictureMargin, 2 * pictureMargin + headerHeight + noticeHeight);

QSize sizeOfFirstPicture(const PreviewSheet& sheet, double devicePixelRatio) {
  if (sheet.pictures.empty()) return {};
  return (QSizeF(sheet.pictures.front().size()) / devicePixelRatio).toSize();
}

// The height of this many rows and everything around them, up to a limit.
int heightOf(qsizetype rows, int rowHeight, int others) {
  return static_cast<int>(
      std::min<qsizetype>(usualHeight, rows * rowHeight + headerHeight + others));
}

qsizetype wrappedLines(const TextLines& lines) {
  qsizetype count = 0;
  for (std::size_t i = 0; i < lines.size() && count < usualHeight / lineHeight; ++i)
    count += 1 + lines[i].size() / lineLength;
  return count;
}

QSize aroundImage(QSize image, QSize most) {
  const QSize room = most - aroundPicture;
  if (image.width() > room.width() || image.height() > room.height())
    image.scale(room, Qt::KeepAspectRatio);
  return image + aroundPicture;
}

}  // namespace

QSize sizeFor(const PreviewSheet& sheet, double devicePixelRatio, QSize most) {
  QSize size(readingWidth, usualHeight);
  switch (sheet.body) {
    case PreviewScreen::Kind::Image:
      size = aroundImage(sizeOfFirstPicture(sheet, devicePixelRatio), most);
      break;
    case PreviewScreen::Kind::Pages:
      // As wide as a page; it is scrolled, so its height need not fit.
      size = sizeOfFirstPicture(sheet, devicePixelRatio) + aroundPicture;
      size.setWidth(std::min(size.width(), widestPage));
      break;
    case PreviewScreen::Kind::Folder:
      size = {listingWidth,
              heightOf(std::ssize(sheet.rows), itemHeight, 2 * listMargin + noticeHeight)};
      break;
    case PreviewScreen::Kind::Facts:
    case PreviewScreen::Kind::Media:
    case PreviewScreen::Kind::Failure:
      size = {statingWidth, heightOf(std::ssize(sheet.rows), factHeight, headlineHeight)};
      break;
    case PreviewScreen::Kind::Text:
      size.setHeight(
          heightOf(wrappedLines(sheet.lines), lineHeight, 2 * listMargin + noticeHeight));
      break;
    case PreviewScreen::Kind::Loading:
    case PreviewScreen::Kind::Nothing:
      break;
  }
  return size.expandedTo(smallest).boundedTo(most);
}

QSize mostOf(const QRect& screen) {
  constexpr double share = 0.85;
  return (QSizeF(screen.size()) * share).toSize();
}

QRect place(QSize size, const QRect& owner, const QRect& screen) {
  QRect window(QPoint(0, 0), size);
  window.moveCenter(owner.center());
  // The top left corner with the title must stay visible.
  window.moveRight(std::min(window.right(), screen.right()));
  window.moveBottom(std::min(window.bottom(), screen.bottom()));
  window.moveLeft(std::max(window.left(), screen.left()));
  window.moveTop(std::max(window.top(), screen.top()));
  return window;
}

}  // namespace tessaly::PreviewPlacement
