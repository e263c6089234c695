// Texts, states and actions of the sidebar. It lives as long as its view; lasting data is in the
// session.
#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/PathHandle.h"
#include "app/sidebar/FilterListModel.h"
#include "app/sidebar/PathListModel.h"
#include "app/sidebar/VolumeListModel.h"
#include "session/AccessController.h"
#include "session/ScanSession.h"

namespace tessaly {

class SidebarState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::ScanSession* session READ session CONSTANT)
  Q_PROPERTY(tessaly::PathListModel* pins READ pins CONSTANT)
  Q_PROPERTY(tessaly::PathListModel* recents READ recents CONSTANT)
  Q_PROPERTY(tessaly::PathListModel* excludes READ excludes CONSTANT)
  Q_PROPERTY(tessaly::FilterListModel* filters READ filters CONSTANT)
  Q_PROPERTY(tessaly::VolumeListModel* volumes READ volumes CONSTANT)

  Q_PROPERTY(QString volumeName READ volumeName NOTIFY volumeNameChanged)
  Q_PROPERTY(QString totalText READ totalText NOTIFY diskChanged)
  Q_PROPERTY(double usedPercent READ usedPercent NOTIFY diskChanged)  // 0 to 100
  Q_PROPERTY(qint64 usedBytes READ usedBytes NOTIFY diskChanged)
  Q_PROPERTY(qint64 totalBytes READ totalBytes NOTIFY diskChanged)
  Q_PROPERTY(qint64 freeBytes READ freeBytes NOTIFY diskChanged)

  Q_PROPERTY(bool scanning READ isScanning NOTIFY scanningChanged)
  Q_PROPERTY(QString percentText READ percentText NOTIFY percentTextChanged)

  Q_PROPERTY(bool showsMap READ showsMap NOTIFY paneChanged)
  Q_PROPERTY(bool showsMonitor READ showsMonitor NOTIFY paneChanged)
  Q_PROPERTY(bool showsApps READ showsApps NOTIFY paneChanged)
  // The size of the folder on screen, and the number of items in the Trash; empty if there is none.
  Q_PROPERTY(QString mapBadge READ mapBadge NOTIFY mapBadgeChanged)
  Q_PROPERTY(QString trashBadge READ trashBadge NOTIFY trashBadgeChanged)
  // The Trash is being emptied.
  Q_PROPERTY(bool emptying READ isEmptying NOTIFY emptyingChanged)

 public:
  // The arguments must outlive it.
  explicit SidebarState(ScanSession& session, AccessController& access, QObject* parent = nullptr);

  ScanSession* session() const { return &session_; }
  PathListModel* pins() { return &pins_; }
  PathListModel* recents() { return &recents_; }
  PathListModel* excludes() { return &excludes_; }
  FilterListModel* filters() { return &filters_; }
  VolumeListModel* volumes() { return &volumes_; }

  QString volumeName() const;
  QString totalText() const;
  double usedPercent() const { return disk().usedPercent; }
  qint64 usedBytes() const { return disk().used; }
  qint64 totalBytes() const { return disk().total; }
  qint64 freeBytes() const { return disk().free; }

  bool isScanning() const;
  QString percentText() const;

  bool showsMap() const { return shows(MainPane::map); }
  bool showsMonitor() const { return shows(MainPane::monitor); }
  bool showsApps() const { return shows(MainPane::apps); }
  QString mapBadge() const;
  QString trashBadge() const;
  bool isEmptying() const { return emptying_; }

  // Scans a folder. Scanning the whole disk checks the right to read it again; without it the gate
  // is raised and no scan starts.
  Q_INVOKABLE void scanPath(const tessaly::PathHandle& path);
  Q_INVOKABLE void scanFullMac();

  Q_INVOKABLE void showMap();
  Q_INVOKABLE void showMonitor();
  Q_INVOKABLE void showApps();

  // Empties the Trash at once, without a question. Does nothing if the Trash is empty or already
  // being emptied, and while a batch moves to it.
  Q_INVOKABLE void emptyTrash();

  Q_INVOKABLE void togglePin(const tessaly::PathHandle& path);
  Q_INVOKABLE void removeExclude(const tessaly::PathHandle& path);
  Q_INVOKABLE void toggleFilter(const QString& filterId);
  Q_INVOKABLE void toggleSkip(const QString& filterId);

 signals:
  void volumeNameChanged();
  void diskChanged();
  void scanningChanged();
  void percentTextChanged();
  void paneChanged();
  void mapBadgeChanged();
  void trashBadgeChanged();
  void emptyingChanged();

 private:
  const DiskUsage& disk() const;
  bool shows(MainPane pane) const;
  void setPane(MainPane pane);
  void setEmptying(bool emptying);

  ScanSession& session_;
  AccessController& access_;
  PathListModel pins_;
  PathListModel recents_;
  PathListModel excludes_;
  FilterListModel filters_;
  VolumeListModel volumes_;
  bool emptying_ = false;
};

}  // namespace tessaly
