// What the built program should have on its screen: a window without a screen, over the same
// folder, tells where things stand in it and how they look.
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
  // Where something of this name is shown; nothing where it is not.
  QRect placeOf(const QString& name);

  void scan();
  void drillInto(const DiskNode& node);
  void hover(QPoint point);
  void click(const QString& name);
  void clickSecondary(QPoint point);

  const std::set<std::string>& grewPaths() { return application_.session().result().grewPaths(); }

  // The tiles on the map, in the window.
  std::vector<TreemapRect> tiles();

  // The window as it is.
  QImage look();

 private:
  FakeMachine machine_;
  Application application_;
};

// What is wrong with how a tile without tiles inside stands on the screen; empty when nothing is.
// Looked at below the middle, where there is neither label nor sheen.
std::string wrongAbout(const QImage& screen, const TreemapRect& rect,
                       const std::set<std::string>& grewPaths);

// How much of a place looks otherwise in one picture than in another, from 0 to 1: by clearly
// another colour, as no other way to draw the edge of a letter brings about.
double differenceWithin(const QRect& place, const QImage& one, const QImage& other);

}  // namespace tessaly
