// What the panels for folders and files have in common: a dialog of Qt's own, which follows the
// dark look of the window where the desktop's would not, and opens where it was left.
#pragma once

#include <optional>
#include <string>

#include <QFileDialog>

namespace tessaly::FilePanel {

// Makes `dialog` ready to open in `directory`.
void setUp(QFileDialog& dialog, const std::string& directory);

// Runs the event loop until the user has answered. Gives the absolute path he chose, as bytes;
// absent when he backed out.
std::optional<std::string> run(QFileDialog& dialog);

// The bytes of a path that came from a dialog.
std::string bytesOf(const QString& path);

}  // namespace tessaly::FilePanel
