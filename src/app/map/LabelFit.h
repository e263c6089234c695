// The part of a label that fits in front of the text at the right end of a tile: symbol and name.
// Pure.
#pragma once

#include <QFontMetricsF>
#include <QString>

namespace tessaly {

struct LabelFit {
  bool showsSymbol = true;
  QString name;  // empty if not even one character fits

  // Cuts a name to `room` points, the space beside the symbol with its gap of `symbolRoom`, and
  // adds an ellipsis. If only the ellipsis would fit, the symbol is left out; if that is still too
  // little, the name is.
  static LabelFit of(const QString& name, const QFontMetricsF& metrics, double room,
                     double symbolRoom);

  friend bool operator==(const LabelFit&, const LabelFit&) = default;
};

}  // namespace tessaly
