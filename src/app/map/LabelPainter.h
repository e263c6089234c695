// Paints the labels of tiles: white text and icons with a soft shadow. Laying out and blurring a
// text costs more than painting a tile, so each picture is cached while it is in use. Main thread
// only.
#pragma once

#include <QFont>
#include <QHash>
#include <QImage>
#include <QString>

#include "app/map/PixelCanvas.h"
#include "app/map/TileLabel.h"
#include "treemap/TreemapRect.h"

namespace tessaly {

class LabelPainter {
 public:
  LabelPainter();

  // Paints the label of the tile, if it has one, over the canvas. Never exceeds the tile.
  void paint(PixelCanvas& canvas, const TreemapRect& rect);

  // Call it after painting all tiles: if there are many pictures, drops those that were not used.
  void endPass();

 private:
  enum Style { name11, name12, sizeText, icon };

  // A text or an icon with its shadow.
  struct Picture {
    QImage image;
    double width = 0;  // advance width, in points
    double height = 0;
    bool takesSymbolsRoom = false;  // when nothing else fits
    unsigned lastPass = 0;
  };

  const QFont& fontOf(Style style) const;
  template <typename Make>
  const Picture& kept(const QString& key, Make make);
  const Picture& picture(Style style, const QString& text);
  // `name`, cut to `room` points beside a symbol that takes `symbolRoom`.
  Picture fitting(Style style, const QString& name, double room, double symbolRoom);
  Picture makeText(Style style, const QString& text, double scale) const;
  static Picture makeIcon(const QString& name, double scale);

  QFont nameFont11_;
  QFont nameFont12_;
  QFont sizeFont_;
  double scale_ = 0;
  unsigned pass_ = 0;
  QHash<QString, Picture> pictures_;
};

}  // namespace tessaly
