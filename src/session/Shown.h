// What is shown: the front pane, how the tree is drawn, and the open overlays.
//
// Main thread only.
#pragma once

#include <optional>

#include <QObject>

#include "scan/DiskNode.h"
#include "session/FieldChanges.h"

namespace tessaly {

enum class MainPane { map, apps, monitor };
enum class VizMode {
  treemap,
  list,
  grew,
  duplicates,
  compare,
  largest,
  aliases,
  cloud,
  clones,
  history,
  safe
};

class Shown : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool heatmap READ heatmap WRITE setHeatmap NOTIFY heatmapChanged)
  Q_PROPERTY(bool searchOpen READ searchOpen WRITE setSearchOpen NOTIFY searchOpenChanged)
  Q_PROPERTY(bool aiOpen READ aiOpen WRITE setAiOpen NOTIFY aiOpenChanged)
  Q_PROPERTY(bool ocrOpen READ ocrOpen WRITE setOcrOpen NOTIFY ocrOpenChanged)

 public:
  MainPane pane() const { return pane_; }
  void setPane(MainPane pane);
  void setPane(FieldChanges& changes, MainPane pane);
  VizMode vizMode() const { return vizMode_; }
  void setVizMode(VizMode mode);
  void setVizMode(FieldChanges& changes, VizMode mode);
  bool heatmap() const { return heatmap_; }
  void setHeatmap(bool on);
  bool searchOpen() const { return searchOpen_; }
  void setSearchOpen(bool open);
  bool aiOpen() const { return aiOpen_; }
  void setAiOpen(bool open);
  bool ocrOpen() const { return ocrOpen_; }
  void setOcrOpen(bool open);
  // The item whose menu is open. Never a remainder.
  const std::optional<DiskNode>& menuNode() const { return menuNode_; }
  void setMenuNode(std::optional<DiskNode> node);
  void setMenuNode(FieldChanges& changes, std::optional<DiskNode> node);

 signals:
  void paneChanged();
  void vizModeChanged();
  void heatmapChanged();
  void searchOpenChanged();
  void aiOpenChanged();
  void ocrOpenChanged();
  void menuNodeChanged();

 private:
  MainPane pane_ = MainPane::map;
  VizMode vizMode_ = VizMode::treemap;
  bool heatmap_ = false;
  bool searchOpen_ = false;
  bool aiOpen_ = false;
  bool ocrOpen_ = false;
  std::optional<DiskNode> menuNode_;
};

}  // namespace tessaly
