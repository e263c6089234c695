// The real window over a folder made for the test, with every queue stepped by hand: the walk runs
// when the journey says so, and what it reports arrives when the journey says so.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include <QQuickItem>
#include <QString>

#include "fixture/FixtureWindow.h"

namespace tessaly {

class Journey : public testing::Test {
 public:
  using Lend = FixtureWindow::Lend;

 protected:
  explicit Journey(std::string_view tree, Lend lend = {});

  ScanSession& session() { return fixture_.session(); }
  QQuickWindow& window() { return fixture_.window(); }
  Application& application() { return fixture_.application(); }

  // Ends the program, and starts it once more on the same machine.
  void restart() { fixture_.restart(); }
  // The same, but whether the window shows is left to the program.
  void relaunch() { fixture_.relaunch(); }

  // What is shown under this object name; a failure and null when there is no such thing.
  QQuickItem* item(const QString& name);
  bool shows(const QString& name) { return fixture_.shows(name); }
  QString text(const QString& name);

  // The tile of the item at `below` under the root, as a point of the window where nothing lies
  // over the tile: in its header if it has tiles inside.
  QPoint tilePoint(std::string_view below);

  void click(const QString& name);
  void clickAt(QPoint point) { fixture_.clickAt(point); }
  void clickHolding(Qt::KeyboardModifiers modifiers, QPoint point) {
    fixture_.clickAt(point, modifiers);
  }
  void hoverAt(QPoint point) { fixture_.hoverAt(point); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    fixture_.press(key, modifiers);
  }
  // Goes on with Tab until the item of this name has the keyboard; a failure where it is not
  // reached.
  void tabTo(const QString& name);

  // Runs the walk that waits, and then brings home what it has to say.
  void walk();
  void comeHome();
  void finishScan();

  TempTree tree_;
  FakeMachine machine_;
  HandSteppedDispatch& dispatch_ = machine_.dispatch;
  FakeFolderPanel& folderPanel_ = machine_.folderPanel;
  FakeWorkspace& workspace_ = machine_.workspace;

 private:
  FixtureWindow fixture_;
};

}  // namespace tessaly
