// What the built program should show: an off-screen window over the same folder, which tells where
// items are and how they look.
#pragma once

#include <set>
#include <string>
#include <vector>

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include "app/Application.h"
#include "support/FakeMachine.h"
#include "treemap/TreemapLayout.h"

namespace tessaly {

class ScreenTwin {
 public:
  explicit ScreenTwin(const std::string& home);

  QPoint middleOf(const QString& name);
  // The rectangle of the item with this object name; empty if it is not shown.
  QRect placeOf(const QString& name);

  void scan();
  void drillInto(const DiskNode& node);
  void hover(QPoint point);
  void click(const QString& name);
  void clickSecondary(QPoint point);

  const std::set<std::string>& grewPaths() { return application_.session().result().grewPaths(); }

  // The tiles on the map, in the window.
  std::vector<TreemapRect> tiles();

  // A picture of the window.
  QImage look();

 private:
  FakeMachine machine_;
  Application application_;
};

// What is wrong with a tile without tiles inside on the screen; empty if nothing is. Checks below
// the middle, where there is neither label nor sheen.
std::string wrongAbout(const QImage& screen, const TreemapRect& rect,
                       const std::set<std::string>& grewPaths);

// The share of a rectangle that differs between two pictures, from 0 to 1. Only clearly different
// colours count, not another antialiasing of letters.
double differenceWithin(const QRect& place, const QImage& one, const QImage& other);

}  // namespace tessaly
