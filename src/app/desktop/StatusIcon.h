// The picture of the status-bar extra: its symbol with its text painted into it, readable on light
// panels and dark ones.
//
// Main thread only, once a QGuiApplication stands.
#pragma once

#include <vector>

#include <QImage>

#include "platform/StatusBarExtra.h"

namespace tessaly::StatusIcon {

// A square of so many pixels. The text may have four letters before it gets small.
QImage paint(const StatusBarExtra::Label& label, int side);

// In the sizes that panels have, smallest first.
std::vector<QImage> paint(const StatusBarExtra::Label& label);

}  // namespace tessaly::StatusIcon
