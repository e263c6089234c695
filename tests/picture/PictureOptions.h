// The command line of the picture tool.
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

  QString file;                 // the path of the picture
  std::string root;             // the folder to scan; empty: the home folder
  QStringList drill;            // names of folders to open, in order
  std::optional<QPoint> hover;  // position of the pointer, in points of the window
  std::optional<QSize> size;    // of the window, in points; absent: the default of the screen
  double scale = 1;             // pixels per point
  Screen screen = Screen::map;
  QString fixture;  // a screen of a fake machine; empty: of this machine
  // The folder of kept pictures to renew, instead of writing one picture; empty: none.
  QString keep;

  static const char* usage();

  // Absent if the arguments (without the program's name) are invalid.
  static std::optional<PictureOptions> parse(const QStringList& arguments);
};

}  // namespace tessaly
