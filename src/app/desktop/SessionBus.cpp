#include "app/desktop/SessionBus.h"

#include <utility>

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

namespace tessaly {

SessionBus::SessionBus(Dispatch& dispatch, Connect connect)
    : dispatch_(dispatch), connect_(std::move(connect)) {}

void SessionBus::call(const QDBusMessage& method, Answer answer) {
  whenOpen([this, method, answer = std::move(answer)](QDBusConnection& bus) {
    if (!bus.isConnected()) {
      answer(QDBusMessage::createError(QDBusError::Disconnected, QStringLiteral("no bus")));
      return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(method), &calls_);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &calls_,
                     [answer](QDBusPendingCallWatcher* finished) {
                       finished->deleteLater();
                       answer(finished->reply());
                     });
  });
}

void SessionBus::emitSignal(const QDBusMessage& signal) {
  whenOpen([signal](QDBusConnection& bus) {
    if (bus.isConnected()) bus.send(signal);
  });
}

void SessionBus::whenOpen(Use use) {
  if (bus_.isConnected()) {
    use(bus_);
    return;
  }
  waiting_.push_back(std::move(use));
  if (waiting_.size() > 1) return;
  dispatch_.async(Dispatch::Queue::utility, [&dispatch = dispatch_, connect = connect_,
                                             weakSelf = std::weak_ptr(self_)]() mutable {
    dispatch.async(Dispatch::Queue::main, [weakSelf = std::move(weakSelf), bus = connect()] {
      if (const auto self = weakSelf.lock()) (*self)->opened(bus);
    });
  });
}

void SessionBus::opened(const QDBusConnection& bus) {
  bus_ = bus;
  const std::vector<Use> waiting = std::exchange(waiting_, {});
  for (const Use& use : waiting) use(bus_);
}

}  // namespace tessaly
