#include "app/quicklook/PreviewWindow.h"

#include <optional>
#include <utility>

#include <QQmlComponent>
#include <QScreen>

#include "app/quicklook/PathOfFileUri.h"
#include "app/quicklook/PreviewPlacement.h"

namespace tessaly {

PreviewWindow::PreviewWindow(QQmlEngine& engine, Dispatch& dispatch, Read read,
                             PreviewState::Open open)
    : engine_(engine), dispatch_(dispatch), read_(std::move(read)), state_(std::move(open)) {
  connect(&state_, &PreviewState::opened, this, &PreviewWindow::close);
}

PreviewWindow::~PreviewWindow() {
  giveUp();
  if (window_) window_->disconnect(this);
}

void PreviewWindow::setOwner(QWindow* owner) {
  if (owner_) owner_->disconnect(this);
  owner_ = owner;
  if (owner_)
    connect(owner_, &QWindow::visibleChanged, this, [this](bool visible) {
      if (!visible) close();
    });
}

void PreviewWindow::setDataSource(const PreviewSource* source) {
  source_ = source;
  if (source_ == nullptr) close();
}

void PreviewWindow::makeKeyAndOrderFront() {
  if (source_ == nullptr || source_->numberOfPreviewItems() == 0) return;
  const std::optional<std::string> path = pathOfFileUri(source_->previewItemAt(0));
  if (!path) return;
  makeWindow();
  load(*path);
  if (window_->isVisible()) {
    appear();
  } else {
    dispatch_.after(patience, Dispatch::Queue::main, [this, job = job_] {
      if (!job->cancelled && !window_->isVisible()) appear();
    });
  }
}

void PreviewWindow::load(const std::string& path) {
  giveUp();
  state_.load(path);
  job_ = std::make_shared<Job>();
  dispatch_.async(Dispatch::Queue::userInitiated, [this, &dispatch = dispatch_, read = read_,
                                                   job = job_, path] {
    if (job->cancelled) return;
    const auto isCancelled = [job] { return job->cancelled.load(); };
    auto sheet = std::make_shared<PreviewSheet>(PreviewSheet::of(read(path, isCancelled)));
    // The destructor cancels the job, and both run on the main thread, so the object exists here.
    dispatch.async(Dispatch::Queue::main, [this, job, sheet] {
      if (!job->cancelled) arrived(std::move(*sheet));
    });
  });
}

void PreviewWindow::arrived(PreviewSheet sheet) {
  state_.setSheet(std::move(sheet));
  if (!window_->isVisible())
    appear();
  else if (window_->size() == fittedSize_)
    fit();
}

void PreviewWindow::makeWindow() {
  if (window_) return;
  QQmlComponent component(
      &engine_,
      QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/QuickLook/QuickLookWindow.qml")));
  QObject* made = component.createWithInitialProperties(
      {{QStringLiteral("preview"), QVariant::fromValue(&state_)}});
  window_.reset(qobject_cast<QQuickWindow*>(made));
  if (!window_)
    qFatal("The preview window could not be created: %s", qPrintable(component.errorString()));
  connect(window_.get(), &QWindow::visibleChanged, this, [this](bool visible) {
    if (visible) return;
    giveUp();
    state_.setSheet({});
    if (owner_ && owner_->isVisible()) owner_->requestActivate();
  });
}

void PreviewWindow::appear() {
  if (!window_->isVisible()) {
    window_->setTransientParent(owner_);
    fit();
    window_->show();
  }
  window_->raise();
  window_->requestActivate();
}

void PreviewWindow::fit() {
  const QScreen* screen = owner_ ? owner_->screen() : window_->screen();
  const QRect available = screen->availableGeometry();
  const QRect over = owner_ ? owner_->geometry() : available;
  fittedSize_ = PreviewPlacement::sizeFor(state_.sheet(), screen->devicePixelRatio(),
                                          PreviewPlacement::mostOf(available));
  window_->setGeometry(PreviewPlacement::place(fittedSize_, over, available));
}

void PreviewWindow::close() {
  giveUp();
  if (window_) window_->close();
}

void PreviewWindow::giveUp() {
  if (job_) job_->cancelled = true;
}

}  // namespace tessaly
