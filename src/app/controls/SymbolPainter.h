// Draws the program's symbols: one line-style set on a 24-unit grid, stored as SVG resources in
// which black is ink and white erases. A symbol is drawn in one colour.
//
// `size` is the font size, in points, of the text beside the symbol; the picture is a square of
// `side(size)` points. Pictures are cached. Main thread only, or the render thread while the main
// thread waits for it.
#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace tessaly::SymbolPainter {

// The side, in integer points, of the square of a symbol for this font size.
int side(double size);

// The symbol as a picture of side(size) points with this pixel ratio. A name without a symbol gives
// a dashed square and a warning in the log, so that it is noticed. A bold symbol has thicker lines.
QImage image(const QString& name, double size, const QColor& color, double devicePixelRatio,
             bool isBold = false);
QPixmap pixmap(const QString& name, double size, const QColor& color, double devicePixelRatio);

bool exists(const QString& name);

// All names, sorted.
QStringList names();

}  // namespace tessaly::SymbolPainter
