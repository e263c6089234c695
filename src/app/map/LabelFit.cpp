#include "app/map/LabelFit.h"

namespace tessaly {
namespace {

// The part of the name that fits; empty if not even one character does.
QString cut(const QString& name, const QFontMetricsF& metrics, double room) {
  if (room <= 0) return {};
  const QString fitting = metrics.elidedText(name, Qt::ElideRight, room);
  const bool isWhole = fitting == name;
  return isWhole || fitting.size() > 1 ? fitting : QString();
}

}  // namespace

LabelFit LabelFit::of(const QString& name, const QFontMetricsF& metrics, double room,
                      double symbolRoom) {
  const QString beside = cut(name, metrics, room);
  if (!beside.isEmpty() || name.isEmpty()) return {true, beside};
  const QString alone = cut(name, metrics, room + symbolRoom);
  return {alone.isEmpty(), alone};
}

}  // namespace tessaly
