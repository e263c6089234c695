// What the map pane shows: which of its screens, and the texts on them. It observes the session and
// adds nothing to its state.
#pragma once

#include <optional>
#include <string>

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/map/CanvasState.h"
#include "app/model/NodeHandle.h"
#include "app/panes/GrewListState.h"
#include "app/panes/LargestListState.h"
#include "app/panes/ModeBarState.h"
#include "app/panes/ModeListModel.h"
#include "session/ScanSession.h"

namespace tessaly {

class DiskMapState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")
  // Of the row above the map: what it offers, and the ways of showing the tree. Then of the map.
  Q_PROPERTY(tessaly::ModeBarState* bar READ bar CONSTANT)
  Q_PROPERTY(tessaly::ModeListModel* modes READ modes CONSTANT)
  Q_PROPERTY(tessaly::CanvasState* canvas READ canvas CONSTANT)
  Q_PROPERTY(Screen screen READ screen NOTIFY screenChanged)
  // A scan runs while the result of an older one is on screen.
  Q_PROPERTY(bool rescanning READ isRescanning NOTIFY screenChanged)
  Q_PROPERTY(bool showsTreemap READ showsTreemap NOTIFY screenChanged)
  // The name of the way of showing the tree in the program, as of ModeListModel, and what it is
  // called.
  Q_PROPERTY(QString modeKey READ modeKey NOTIFY screenChanged)
  Q_PROPERTY(QString modeTitle READ modeTitle NOTIFY screenChanged)

  // The folder on screen.
  Q_PROPERTY(tessaly::NodeHandle node READ node NOTIFY nodeChanged)
  Q_PROPERTY(QString nodeName READ nodeName NOTIFY nodeChanged)
  Q_PROPERTY(QString sizeText READ sizeText NOTIFY nodeChanged)
  Q_PROPERTY(QString itemsText READ itemsText NOTIFY nodeChanged)
  // Counts and time of the scan; empty while there are none to show.
  Q_PROPERTY(QString statsText READ statsText NOTIFY statsTextChanged)
  // How much of it could not be read, beside the counts, and what; empty while that is nothing.
  Q_PROPERTY(QString unreadableText READ unreadableText NOTIFY statsTextChanged)
  Q_PROPERTY(QString unreadableList READ unreadableList NOTIFY statsTextChanged)

  // The running scan.
  Q_PROPERTY(QString scanningText READ scanningText NOTIFY progressChanged)
  Q_PROPERTY(QString bannerText READ bannerText NOTIFY progressChanged)
  // What went wrong with the last one; empty when nothing did.
  Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)
  Q_PROPERTY(QString percentText READ percentText NOTIFY percentTextChanged)

 public:
  enum Screen { Idle, Scanning, Failed, Result };
  Q_ENUM(Screen)

  static Screen screenFor(ScanStatus status, bool hasCurrent);

  // What it is given outlives it.
  explicit DiskMapState(ScanSession& session, QObject* parent = nullptr);

  ModeBarState* bar() { return &bar_; }
  ModeListModel* modes() { return &modes_; }
  CanvasState* canvas() { return &canvas_; }
  Screen screen() const;
  bool isRescanning() const;
  bool showsTreemap() const;
  QString modeKey() const;
  QString modeTitle() const;
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

  // Drills into a folder of the map.
  Q_INVOKABLE void open(const tessaly::NodeHandle& node);
  Q_INVOKABLE void showTreemap();
  // The states of lists, which belong to their views.
  Q_INVOKABLE tessaly::GrewListState* grewList(QObject* view) const;
  Q_INVOKABLE tessaly::LargestListState* largestList(QObject* view) const;
  // Lets the window ask what to do with an item of the map.
  Q_INVOKABLE void askAbout(const tessaly::NodeHandle& node);

 signals:
  void screenChanged();
  void nodeChanged();
  // Another folder than before is on screen, not just a newer scan of the same one: what a view
  // remembers of the pointer no longer holds.
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
