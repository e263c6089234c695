#include "app/desktop/StartMessages.h"

#include <mutex>
#include <utility>
#include <vector>

#include <QByteArray>

namespace tessaly {

namespace {

struct Message {
  QtMsgType type;
  QByteArray category;
  QString text;
};

// Qt's message handler is a plain function, so the state is global.
struct Kept {
  std::mutex mutex;
  std::vector<Message> messages;
  std::function<void()> failed;
  QtMessageHandler before = nullptr;
};

Kept& kept() {
  static Kept& all = *new Kept;
  return all;
}

void keep(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type == QtFatalMsg) kept().failed();
  const std::lock_guard lock(kept().mutex);
  kept().messages.push_back({type, context.category, text});
}

}  // namespace

StartMessages::StartMessages(std::function<void()> failed) {
  kept().failed = std::move(failed);
  kept().before = qInstallMessageHandler(keep);
}

StartMessages::~StartMessages() {
  qInstallMessageHandler(kept().before);
  std::vector<Message> messages;
  {
    const std::lock_guard lock(kept().mutex);
    messages.swap(kept().messages);
  }
  for (const Message& message : messages) {
    const QMessageLogContext context(nullptr, 0, nullptr, message.category.constData());
    qt_message_output(message.type, context, message.text);
  }
}

}  // namespace tessaly
