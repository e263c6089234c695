// The preview panel as a separate window. A reader reads the file on a worker; the latest request
// wins.
//
// The window appears with the content, or without it if reading takes long. Space, Escape and
// Command W close it; then, and when its owner is hidden, loading is cancelled and its result
// dropped. Main thread only.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>

#include "app/preview/PreviewContent.h"
#include "app/quicklook/PreviewState.h"
#include "platform/Dispatch.h"
#include "platform/PreviewPanel.h"

namespace tessaly {

class PreviewWindow : public QObject, public PreviewPanel {
  Q_OBJECT

 public:
  // Reads the item at `path`, on a worker. Polls `isCancelled`; the result is ignored once that is
  // true.
  using Read = std::function<PreviewContent(const std::string& path,
                                            const std::function<bool()>& isCancelled)>;

  // How long the window waits for its content before it appears without it.
  static constexpr std::chrono::milliseconds patience{120};

  // `engine` and `dispatch` must outlive this object. With an empty `open` the window has no button
  // for it.
  PreviewWindow(QQmlEngine& engine, Dispatch& dispatch, Read read, PreviewState::Open open = {});
  ~PreviewWindow() override;

  // The window below this one: closes this one with it, and gets the keyboard focus back.
  void setOwner(QWindow* owner);

  void setDataSource(const PreviewSource* source) override;
  // Does nothing while the source has no item.
  void makeKeyAndOrderFront() override;

  // The window itself; null until it is first needed.
  QQuickWindow* window() const { return window_.get(); }
  const PreviewState& state() const { return state_; }

 private:
  // One reading. Only the main thread cancels it; its result is ignored from then on.
  struct Job {
    std::atomic<bool> cancelled = false;
  };

  void load(const std::string& path);
  void arrived(PreviewSheet sheet);
  void makeWindow();
  void appear();
  void fit();
  void close();
  void giveUp();

  QQmlEngine& engine_;
  Dispatch& dispatch_;
  Read read_;
  PreviewState state_;
  const PreviewSource* source_ = nullptr;
  QPointer<QWindow> owner_;
  std::shared_ptr<Job> job_;
  std::unique_ptr<QQuickWindow> window_;
  QSize fittedSize_;  // the size that the program set; any other is the user's
};

}  // namespace tessaly
