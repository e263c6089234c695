// The picture of a screen, drawn in this process or another: the number of pixels per point is
// fixed for each process.
#pragma once

#include <string>

#include <QImage>
#include <QString>

namespace tessaly {

// `screen` is one of PictureWindow::names(); this process has one pixel per point. `tool` is the
// path of the picture tool, which is started for a screen with more. Null on failure.
QImage drawnScreen(const QString& screen, const std::string& tool);

}  // namespace tessaly
