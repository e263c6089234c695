// Draws the program's symbols: one line-style set on a 24-unit grid, kept as SVG resources in which
// black is ink and white takes ink away. A symbol is asked for by name and in one colour.
//
// Sizes are those of the text a symbol stands beside: `size` is a font size in points, and the
// picture is a square of `side(size)` points. Pictures are cached. Main thread only, or the render
// thread while the main thread waits for it.
#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QString>
#include <QStringList>

namespace tessaly::SymbolPainter {

// The side in whole points of the square that a symbol of this font size fills.
int side(double size);

// The symbol as a picture of side(size) points with this pixel ratio. A name that has no symbol
// gives a dashed square and a warning in the log, so that it cannot be overlooked.
// A bold one has heavier lines.
QImage image(const QString& name, double size, const QColor& color, double devicePixelRatio,
             bool isBold = false);
QPixmap pixmap(const QString& name, double size, const QColor& color, double devicePixelRatio);

bool exists(const QString& name);

// Every name there is, sorted.
QStringList names();

}  // namespace tessaly::SymbolPainter
