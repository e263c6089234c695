// Which pane is in front, which of the window's bars and buttons stand, and what they say, as the
// session goes.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "session/ScanSession.h"

namespace tessaly {

class WindowState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")
  Q_PROPERTY(Pane pane READ pane WRITE setPane NOTIFY changed)
  // The map is drawn as tiles rather than listed.
  Q_PROPERTY(bool showsTreemap READ showsTreemap NOTIFY changed)
  Q_PROPERTY(bool showsBackButton READ showsBackButton NOTIFY changed)
  Q_PROPERTY(bool showsBreadcrumbs READ showsBreadcrumbs NOTIFY changed)
  // The volume of the folder on screen.
  Q_PROPERTY(QString volumeName READ volumeName NOTIFY changed)
  // Something on the map can be looked into.
  Q_PROPERTY(bool hasFocusedNode READ hasFocusedNode NOTIFY focusedChanged)
  Q_PROPERTY(tessaly::NodeHandle focusedNode READ focusedNode NOTIFY focusedChanged)
  // The panel of the queue shows more than its header.
  Q_PROPERTY(bool queueUnfolded READ isQueueUnfolded NOTIFY changed)
  // The settings lie over the window.
  Q_PROPERTY(bool settingsOpen READ settingsOpen WRITE setSettingsOpen NOTIFY settingsOpenChanged)

 public:
  enum Pane { Map, Apps, Monitor };
  Q_ENUM(Pane)

  // What it is given outlives it.
  explicit WindowState(ScanSession& session, QObject* parent = nullptr);

  Pane pane() const;
  void setPane(Pane pane);
  bool showsTreemap() const;
  Q_INVOKABLE void showTreemap();
  // There is a folder to go back to, whichever pane is in front.
  bool showsBackButton() const;
  // The same, and the map is in front.
  bool showsBreadcrumbs() const;
  QString volumeName() const;
  bool hasFocusedNode() const;
  NodeHandle focusedNode() const;
  bool isQueueUnfolded() const;
  // Folds the panel of the queue to its header, from which it comes back; hides it where nothing
  // waits in it.
  Q_INVOKABLE void putQueueAway();
  bool settingsOpen() const { return settingsOpen_; }
  void setSettingsOpen(bool open);

 signals:
  void changed();
  void focusedChanged();
  void settingsOpenChanged();

 private:
  ScanSession& session_;
  bool settingsOpen_ = false;
};

}  // namespace tessaly
