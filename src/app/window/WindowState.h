// Which pane is in front, which of the window's bars and buttons stand, what they say, and what
// lies over them, as the session goes.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/NodeHandle.h"
#include "session/AccessController.h"
#include "session/ScanSession.h"

namespace tessaly {

class WindowState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")
  Q_PROPERTY(Pane pane READ pane WRITE setPane NOTIFY changed)
  Q_PROPERTY(bool showsBackButton READ showsBackButton NOTIFY changed)
  Q_PROPERTY(bool showsBreadcrumbs READ showsBreadcrumbs NOTIFY changed)
  // The volume of the folder on screen.
  Q_PROPERTY(QString volumeName READ volumeName NOTIFY changed)
  Q_PROPERTY(tessaly::NodeHandle focusedNode READ focusedNode NOTIFY focusedChanged)
  // The settings lie over the window.
  Q_PROPERTY(bool settingsOpen READ settingsOpen WRITE setSettingsOpen NOTIFY settingsOpenChanged)
  // The menu of commands, which tells it.
  Q_PROPERTY(bool menuOpen READ isMenuOpen WRITE setMenuOpen NOTIFY layersChanged)
  // The gate, a question or a card lies over the whole window, the search included.
  Q_PROPERTY(bool covered READ isCovered NOTIFY layersChanged)
  // Nothing lies over what the commands act on, except perhaps their menu.
  Q_PROPERTY(bool clear READ isClear NOTIFY layersChanged)
  // The keys of commands act.
  Q_PROPERTY(bool takesCommands READ takesCommands NOTIFY layersChanged)
  // Escape has something to put away.
  Q_PROPERTY(bool canPutAway READ canPutAway NOTIFY layersChanged)
  // An item of the map can be previewed by a key.
  Q_PROPERTY(bool canPreview READ canPreview NOTIFY layersChanged)

 public:
  enum Pane { Map, Apps, Monitor };
  Q_ENUM(Pane)

  // What it is given outlives it.
  WindowState(ScanSession& session, const AccessController& access, QObject* parent = nullptr);

  Pane pane() const;
  void setPane(Pane pane);
  // There is a folder to go back to, whichever pane is in front.
  bool showsBackButton() const;
  // The same, and the map is in front.
  bool showsBreadcrumbs() const;
  QString volumeName() const;
  bool hasFocusedNode() const;
  NodeHandle focusedNode() const;
  bool settingsOpen() const { return settingsOpen_; }
  void setSettingsOpen(bool open);
  bool isMenuOpen() const { return menuOpen_; }
  void setMenuOpen(bool open);
  bool isCovered() const;
  bool isClear() const;
  bool takesCommands() const;
  bool canPutAway() const { return escape() != Escape::nothing; }
  bool canPreview() const;
  // Puts away what is in front: the search, then the panel of the queue, then another pane than the
  // map, then a list in place of the treemap. Covers and menus close by themselves.
  Q_INVOKABLE void putAway();

 signals:
  void changed();
  void focusedChanged();
  void settingsOpenChanged();
  void layersChanged();

 private:
  enum class Escape { nothing, search, queue, pane, list };

  Escape escape() const;
  bool isQueueUnfolded() const;
  void putQueueAway();

  ScanSession& session_;
  const AccessController& access_;
  bool settingsOpen_ = false;
  bool menuOpen_ = false;
};

}  // namespace tessaly
