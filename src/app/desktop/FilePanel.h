// The common part of the panels for folders and files: Qt's own dialog, which has the dark look of
// the window, in contrast to the desktop's, and opens where it was left.
#pragma once

#include <optional>
#include <string>

#include <QFileDialog>

namespace tessaly::FilePanel {

// Prepares `dialog` to open in `directory`.
void setUp(QFileDialog& dialog, const std::string& directory);

// Runs the event loop until the user has answered. Returns the absolute path as bytes; absent if
// the user cancelled.
std::optional<std::string> run(QFileDialog& dialog);

// The bytes of a path from a dialog.
std::string bytesOf(const QString& path);

}  // namespace tessaly::FilePanel
