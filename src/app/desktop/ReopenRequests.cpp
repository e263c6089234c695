#include "app/desktop/ReopenRequests.h"

#include <utility>

namespace tessaly {

ReopenRequests::ReopenRequests(SingleInstance instance, std::function<void()> reopen)
    : instance_(std::move(instance)) {
  if (instance_.descriptor() < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(instance_.descriptor(), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this, reopen = std::move(reopen)] {
                     if (instance_.takeRequests()) reopen();
                   });
}

void ReopenRequests::hold() {
  if (notifier_) notifier_->setEnabled(false);
}

void ReopenRequests::giveUp() {
  if (notifier_) {
    notifier_->setEnabled(false);
    // The notifier may be the caller.
    notifier_.release()->deleteLater();
  }
  instance_.giveUp();
}

}  // namespace tessaly
