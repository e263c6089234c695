// What the picture tool is asked for on its command line.
#pragma once

#include <optional>
#include <string>

#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>

namespace tessaly {

struct PictureOptions {
  enum class Screen { idle, scanning, failed, map, rescanning };

  QString file;                 // where the picture goes
  std::string root;             // the folder to scan; empty: the home folder
  QStringList drill;            // names of folders to open, one after the other
  std::optional<QPoint> hover;  // where the pointer stands, in points of the window
  std::optional<QSize> size;    // of the window, in points; absent: as usual for the screen
  double scale = 1;             // pixels a point
  Screen screen = Screen::map;
  QString fixture;  // a screen over a machine that is made up; empty: over this one
  // The folder of kept pictures to renew, instead of writing one picture; empty: none.
  QString keep;

  static const char* usage();

  // Absent when the arguments (without the program's name) make no sense.
  static std::optional<PictureOptions> parse(const QStringList& arguments);
};

}  // namespace tessaly
