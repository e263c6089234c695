// What of a label there is room for in front of what stands at the right end of a tile: the symbol
// and the name. Pure.
#pragma once

#include <QFontMetricsF>
#include <QString>

namespace tessaly {

struct LabelFit {
  bool showsSymbol = true;
  QString name;  // empty where not one character of it has room

  // A name wider than `room` points, which the symbol and its gap of `symbolRoom` leave over, is
  // cut to what fits, with an ellipsis. Before it were cut to its ellipsis alone the symbol goes,
  // and if that gives it too little room, the name does.
  static LabelFit of(const QString& name, const QFontMetricsF& metrics, double room,
                     double symbolRoom);

  friend bool operator==(const LabelFit&, const LabelFit&) = default;
};

}  // namespace tessaly
