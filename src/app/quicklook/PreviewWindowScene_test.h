// The preview's window over a main one, with contents from the test and every queue stepped by
// hand: the test decides when a file is read and when its content arrives.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include "app/quicklook/PreviewWindow.h"
#include "app/quicklook/QuickLook.h"
#include "support/HandSteppedDispatch.h"

namespace tessaly {

class PreviewWindowScene : public testing::Test {
 protected:
  PreviewWindowScene();
  ~PreviewWindowScene() override;

  // A file with this content, and only the fact `size`.
  static PreviewContent contentOf(const std::string& path, decltype(PreviewContent::body) body,
                                  std::int64_t size = 2048);

  // Shows `content`, and waits until it is complete.
  QQuickWindow& show(const PreviewContent& content);

  // Throws if there is none, which fails a test with a message.
  QQuickWindow& window();
  bool isOpen() { return panel_->window() != nullptr && window().isVisible(); }

  // Updates the window after all that has happened.
  void settle();

  // All visible items with this object name, in painting order.
  std::vector<QQuickItem*> items(const QString& name);
  // The only such item; a failure and null if there is none.
  QQuickItem* item(const QString& name);
  bool shows(const QString& name);
  QString text(const QString& name);
  // The accessible name of an item.
  QString spokenName(const QString& name);

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  QQmlEngine engine_;
  HandSteppedDispatch dispatch_;
  std::map<std::string, PreviewContent> contents_;  // by path
  std::vector<std::string> read_;                   // paths in the order of reading
  std::function<void(const std::function<bool()>& isCancelled)> whileReading_;
  std::vector<std::string> opened_;
  QQuickWindow owner_;
  std::unique_ptr<PreviewWindow> panel_;
  std::unique_ptr<QuickLook> look_;
};

}  // namespace tessaly
