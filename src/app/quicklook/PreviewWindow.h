// The preview panel as a window of our own, beside the main one. It shows what a reader finds in
// the file, which is read on a worker; what was asked for later wins.
//
// The window appears with the content, or without it when that takes its time. Space, Escape and
// Command W close it; then, and when its owner goes out of sight, what was loading is given up and
// forgotten. Main thread only.
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
  // Reads the item at `path`, on a worker. Asked often, `isCancelled` may cut it short; the result
  // is then of no interest.
  using Read = std::function<PreviewContent(const std::string& path,
                                            const std::function<bool()>& isCancelled)>;

  // How long the window waits for its content before it appears without.
  static constexpr std::chrono::milliseconds patience{120};

  // `engine` and `dispatch` outlive this object. Without `open` the window has no button for it.
  PreviewWindow(QQmlEngine& engine, Dispatch& dispatch, Read read, PreviewState::Open open = {});
  ~PreviewWindow() override;

  // The window that this one opens over, that it closes with, and that has the keyboard after it.
  void setOwner(QWindow* owner);

  void setDataSource(const PreviewSource* source) override;
  // Does nothing while the source has nothing to show.
  void makeKeyAndOrderFront() override;

  // The window itself; null until it was first needed.
  QQuickWindow* window() const { return window_.get(); }
  const PreviewState& state() const { return state_; }

 private:
  // One reading. Only the main thread cancels it; from then on its result is not looked at.
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
  QSize fittedSize_;  // what we gave the window; another one is the user's
};

}  // namespace tessaly
