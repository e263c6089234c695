// The real window over a folder made for the test, with every queue stepped by hand: the test
// decides when the walk runs and when its reports arrive.
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

  // Ends the program, and starts it again on the same machine.
  void restart() { fixture_.restart(); }
  // The same, but the program decides whether the window is shown.
  void relaunch() { fixture_.relaunch(); }

  // The visible item with this object name; a failure and null if there is none.
  QQuickItem* item(const QString& name);
  bool shows(const QString& name) { return fixture_.shows(name); }
  QString text(const QString& name);

  // A point of the window at which the tile of the item `below` the root is not covered: in its
  // header if it has tiles inside.
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
  // Presses Tab until the item of this name has the keyboard focus; a failure if it is not reached.
  void tabTo(const QString& name);

  // Runs the waiting walk, and then its results on the main queue.
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
