// The picture of the status-bar extra: its symbol with its text painted over it, readable on light
// and dark panels.
//
// Main thread only, after a QGuiApplication is created.
#pragma once

#include <vector>

#include <QImage>

#include "platform/StatusBarExtra.h"

namespace tessaly::StatusIcon {

// A square with this side in pixels. Texts of up to four letters have the full size.
QImage paint(const StatusBarExtra::Label& label, int side);

// In the usual sizes of panels, smallest first.
std::vector<QImage> paint(const StatusBarExtra::Label& label);

}  // namespace tessaly::StatusIcon
