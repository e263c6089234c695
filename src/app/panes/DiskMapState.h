// The screens of the map pane and their texts. It observes the session and adds no state.
#pragma once

#include <optional>
#include <string>

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/map/CanvasState.h"
#include "app/model/NodeHandle.h"
#include "app/panes/AliasListState.h"
#include "app/panes/CloneListState.h"
#include "app/panes/CloudListState.h"
#include "app/panes/CompareListState.h"
#include "app/panes/DuplicateListState.h"
#include "app/panes/GrewListState.h"
#include "app/panes/HistoryListState.h"
#include "app/panes/LargestListState.h"
#include "app/panes/ListWinsState.h"
#include "app/panes/ModeBarState.h"
#include "app/panes/ModeListModel.h"
#include "app/panes/SafeListState.h"
#include "session/ScanSession.h"

namespace tessaly {

class DiskMapState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  // The row above the map and its modes; then the map.
  Q_PROPERTY(tessaly::ModeBarState* bar READ bar CONSTANT)
  Q_PROPERTY(tessaly::ModeListModel* modes READ modes CONSTANT)
  Q_PROPERTY(tessaly::CanvasState* canvas READ canvas CONSTANT)
  Q_PROPERTY(Screen screen READ screen NOTIFY screenChanged)
  // A scan runs while the result of an older one is on screen.
  Q_PROPERTY(bool rescanning READ isRescanning NOTIFY screenChanged)
  Q_PROPERTY(bool showsTreemap READ showsTreemap NOTIFY screenChanged)
  // The key of the current mode, see ModeListModel.
  Q_PROPERTY(QString modeKey READ modeKey NOTIFY screenChanged)

  // The folder on screen.
  Q_PROPERTY(tessaly::NodeHandle node READ node NOTIFY nodeChanged)
  Q_PROPERTY(QString nodeName READ nodeName NOTIFY nodeChanged)
  Q_PROPERTY(QString sizeText READ sizeText NOTIFY nodeChanged)
  Q_PROPERTY(QString itemsText READ itemsText NOTIFY nodeChanged)
  // Counts and duration of the scan; empty if there are none to show.
  Q_PROPERTY(QString statsText READ statsText NOTIFY statsTextChanged)
  // The number of items that could not be read, and their list; both empty if there are none.
  Q_PROPERTY(QString unreadableText READ unreadableText NOTIFY statsTextChanged)
  Q_PROPERTY(QString unreadableList READ unreadableList NOTIFY statsTextChanged)

  // The running scan.
  Q_PROPERTY(QString scanningText READ scanningText NOTIFY progressChanged)
  Q_PROPERTY(QString bannerText READ bannerText NOTIFY progressChanged)
  // The error of the last scan; empty if it succeeded.
  Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)
  Q_PROPERTY(QString percentText READ percentText NOTIFY percentTextChanged)

 public:
  enum Screen { Idle, Scanning, Failed, Result };
  Q_ENUM(Screen)

  static Screen screenFor(ScanStatus status, bool hasCurrent);

  // `session` must outlive it.
  explicit DiskMapState(ScanSession& session, QObject* parent = nullptr);

  ModeBarState* bar() { return &bar_; }
  ModeListModel* modes() { return &modes_; }
  CanvasState* canvas() { return &canvas_; }
  Screen screen() const;
  bool isRescanning() const;
  bool showsTreemap() const;
  QString modeKey() const;
  NodeHandle node() const { return NodeHandle(node_); }
  QString nodeName() const;
  QString sizeText() const;
  QString itemsText() const;
  QString statsText() const;
  QString unreadableText() const;
  QString unreadableList() const;
  QString scanningText() const;
  QString bannerText() const;
  QString errorText() const;
  QString percentText() const;

  // Shows a folder of the map.
  Q_INVOKABLE void open(const tessaly::NodeHandle& node);
  Q_INVOKABLE void showTreemap();
  // The states of lists, owned by their views.
  Q_INVOKABLE tessaly::AliasListState* aliasList(QObject* view) const;
  Q_INVOKABLE tessaly::CloneListState* cloneList(QObject* view) const;
  Q_INVOKABLE tessaly::CloudListState* cloudList(QObject* view) const;
  Q_INVOKABLE tessaly::CompareListState* compareList(QObject* view) const;
  Q_INVOKABLE tessaly::DuplicateListState* duplicateList(QObject* view) const;
  Q_INVOKABLE tessaly::GrewListState* grewList(QObject* view) const;
  Q_INVOKABLE tessaly::HistoryListState* historyList(QObject* view) const;
  Q_INVOKABLE tessaly::LargestListState* largestList(QObject* view) const;
  Q_INVOKABLE tessaly::SafeListState* safeList(QObject* view) const;
  Q_INVOKABLE tessaly::ListWinsState* winsList(QObject* view) const;
  // Opens the window's menu for an item of the map.
  Q_INVOKABLE void askAbout(const tessaly::NodeHandle& node);

 signals:
  void screenChanged();
  void nodeChanged();
  // Another folder is on screen, not only a newer scan of the same one. The pointer state of views
  // is no longer valid.
  void placeChanged();
  void statsTextChanged();
  void progressChanged();
  void errorTextChanged();
  void percentTextChanged();

 private:
  void takeCurrent();
  QString progressText() const;
  bool hasFigures() const;

  ScanSession& session_;
  ModeBarState bar_;
  ModeListModel modes_;
  CanvasState canvas_;
  std::optional<DiskNode> node_;
  std::string place_;
};

}  // namespace tessaly
