// The preview's window over a main one, with contents lent by the test and every queue stepped by
// hand: a file is read when the test says so, and what was read arrives when the test says so.
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

  // A file of this content, and nothing else told of it than `size`.
  static PreviewContent contentOf(const std::string& path, decltype(PreviewContent::body) body,
                                  std::int64_t size = 2048);

  // Shows `content` as a user sees it in the end.
  QQuickWindow& show(const PreviewContent& content);

  // Throws while there is none, which fails a test with a message.
  QQuickWindow& window();
  bool isOpen() { return panel_->window() != nullptr && window().isVisible(); }

  // Brings the window up to date with everything that has happened.
  void settle();

  // All that the window shows under this object name, in painting order.
  std::vector<QQuickItem*> items(const QString& name);
  // The only such item; a failure and null when there is no such thing.
  QQuickItem* item(const QString& name);
  bool shows(const QString& name);
  QString text(const QString& name);
  // What an item is called for those who cannot see it.
  QString spokenName(const QString& name);

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  QQmlEngine engine_;
  HandSteppedDispatch dispatch_;
  std::map<std::string, PreviewContent> contents_;  // by path
  std::vector<std::string> read_;                   // paths, in the order of reading
  std::function<void(const std::function<bool()>& isCancelled)> whileReading_;
  std::vector<std::string> opened_;
  QQuickWindow owner_;
  std::unique_ptr<PreviewWindow> panel_;
  std::unique_ptr<QuickLook> look_;
};

}  // namespace tessaly
