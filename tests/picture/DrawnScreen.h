// The picture of a screen, in whatever process it has to be drawn: how many pixels a point has is
// settled once for each.
#pragma once

#include <string>

#include <QImage>
#include <QString>

namespace tessaly {

// `screen` is one of PictureWindow::names(), and this process has one pixel a point. `tool` is the
// path of the picture tool, which is started for a screen of more. Null when that fails.
QImage drawnScreen(const QString& screen, const std::string& tool);

}  // namespace tessaly
