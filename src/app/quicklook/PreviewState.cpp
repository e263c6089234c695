#include "app/quicklook/PreviewState.h"

#include <utility>

namespace tessaly {

PreviewState::PreviewState(Open open, QObject* parent) : QObject(parent), open_(std::move(open)) {}

void PreviewState::load(const std::string& path) {
  path_ = path;
  setSheet(PreviewSheet::loading(path));
  emit began();
}

void PreviewState::setSheet(PreviewSheet sheet) {
  sheet_ = std::move(sheet);
  rows_.setRows(sheet_.rows);
  lines_.setLines(sheet_.lines);
  emit changed();
}

QImage PreviewState::picture(int index) const {
  if (index < 0 || index >= pictureCount()) return {};
  return sheet_.pictures[static_cast<std::size_t>(index)];
}

void PreviewState::open() {
  if (!open_ || path_.empty()) return;
  open_(path_);
  emit opened();
}

}  // namespace tessaly
