// Where the preview's window opens, and how large. Pure. Lengths are in points.
#pragma once

#include <QRect>
#include <QSize>

#include "app/quicklook/PreviewSheet.h"

namespace tessaly::PreviewPlacement {

// The rows above and below the body.
inline constexpr int headerHeight = 53;
inline constexpr int noticeHeight = 32;
// Between a picture and the sides of the window.
inline constexpr int pictureMargin = 20;

inline constexpr QSize smallest{420, 320};

// The size that suits what is shown, within `most`; a picture that is too large for it is taken as
// smaller in proportion. `devicePixelRatio` pixels of a picture make a point.
QSize sizeFor(const PreviewSheet& sheet, double devicePixelRatio, QSize most);

// The most that a window takes of a screen.
QSize mostOf(const QRect& screen);

// A window of this size in the middle of `owner`, moved inside `screen` where it would stand out.
QRect place(QSize size, const QRect& owner, const QRect& screen);

}  // namespace tessaly::PreviewPlacement
