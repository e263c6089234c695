// The state of the window: the current pane, the visible bars and buttons with their texts, and the
// layers that cover them.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/commands/CommandTarget.h"
#include "app/model/NodeHandle.h"
#include "session/AccessController.h"
#include "session/ScanSession.h"

namespace tessaly {

class WindowState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(Pane pane READ pane WRITE setPane NOTIFY changed)
  Q_PROPERTY(bool showsBackButton READ showsBackButton NOTIFY changed)
  Q_PROPERTY(bool showsBreadcrumbs READ showsBreadcrumbs NOTIFY changed)
  // The volume of the folder on screen.
  Q_PROPERTY(QString volumeName READ volumeName NOTIFY changed)
  // The item that commands act on.
  Q_PROPERTY(tessaly::NodeHandle target READ target NOTIFY targetChanged)
  // The settings are shown.
  Q_PROPERTY(bool settingsOpen READ settingsOpen WRITE setSettingsOpen NOTIFY settingsOpenChanged)
  // The menu of commands is open; the menu sets this.
  Q_PROPERTY(bool menuOpen READ isMenuOpen WRITE setMenuOpen NOTIFY layersChanged)
  // The gate, a question or a card covers the whole window, including the search.
  Q_PROPERTY(bool covered READ isCovered NOTIFY layersChanged)
  // No layer covers the content that commands act on; their menu does not count.
  Q_PROPERTY(bool clear READ isClear NOTIFY layersChanged)
  // The shortcuts of commands work.
  Q_PROPERTY(bool takesCommands READ takesCommands NOTIFY layersChanged)
  // Escape has something to close.
  Q_PROPERTY(bool canPutAway READ canPutAway NOTIFY layersChanged)
  // A key can preview the target: the focused item of the map, or a row of a list.
  Q_PROPERTY(bool canPreview READ canPreview NOTIFY layersChanged)

 public:
  enum Pane { Map, Apps, Monitor };
  Q_ENUM(Pane)

  // The arguments must outlive it.
  WindowState(ScanSession& session, const AccessController& access, const CommandTarget& target,
              QObject* parent = nullptr);

  Pane pane() const;
  void setPane(Pane pane);
  // There is a folder to go back to, in any pane.
  bool showsBackButton() const;
  // There is such a folder, and the map is the current pane.
  bool showsBreadcrumbs() const;
  QString volumeName() const;
  NodeHandle target() const;
  bool settingsOpen() const { return settingsOpen_; }
  void setSettingsOpen(bool open);
  bool isMenuOpen() const { return menuOpen_; }
  void setMenuOpen(bool open);
  bool isCovered() const;
  bool isClear() const;
  bool takesCommands() const;
  bool canPutAway() const { return escape() != Escape::nothing; }
  bool canPreview() const;
  // Closes the topmost of these: the search, the queue's panel, a pane other than the map, a list
  // in place of the treemap. Layers over the whole window and menus close by themselves.
  Q_INVOKABLE void putAway();

 signals:
  void changed();
  void targetChanged();
  void settingsOpenChanged();
  void layersChanged();

 private:
  enum class Escape { nothing, search, queue, pane, list };

  Escape escape() const;
  bool isQueueUnfolded() const;
  void putQueueAway();

  ScanSession& session_;
  const AccessController& access_;
  const CommandTarget& target_;
  bool settingsOpen_ = false;
  bool menuOpen_ = false;
};

}  // namespace tessaly
