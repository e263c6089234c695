// Position and size of the preview's window. Pure functions. Lengths are in points.
#pragma once

#include <QRect>
#include <QSize>

#include "app/quicklook/PreviewSheet.h"

namespace tessaly::PreviewPlacement {

// The heights of the rows above and below the body.
inline constexpr int headerHeight = 53;
inline constexpr int noticeHeight = 32;
// Between a picture and the sides of the window.
inline constexpr int pictureMargin = 20;

inline constexpr QSize smallest{420, 320};

// The size that fits the content, within `most`; a picture that is too large is scaled down with
// its aspect ratio. `devicePixelRatio` is in pixels of a picture per point.
QSize sizeFor(const PreviewSheet& sheet, double devicePixelRatio, QSize most);

// The largest window on a screen.
QSize mostOf(const QRect& screen);

// A window of this size in the middle of `owner`, moved into `screen` where it would not fit.
QRect place(QSize size, const QRect& owner, const QRect& screen);

}  // namespace tessaly::PreviewPlacement
