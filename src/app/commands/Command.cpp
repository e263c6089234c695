#include "app/commands/Command.h"

#include <utility>

namespace tessaly {

Command::Command(Description description, QObject* parent)
    : QObject(parent), description_(std::move(description)), isEnabled_(description_.isAllowed()) {}

bool Command::editsText() const {
  for (const auto edit : {QKeySequence::SelectAll, QKeySequence::Copy, QKeySequence::Cut,
                          QKeySequence::Paste, QKeySequence::Undo, QKeySequence::Redo,
                          QKeySequence::DeleteStartOfWord, QKeySequence::DeleteEndOfWord})
    if (QKeySequence::keyBindings(edit).contains(description_.shortcut)) return true;
  return false;
}

void Command::refresh() {
  const bool isAllowed = description_.isAllowed();
  if (isAllowed == isEnabled_) return;
  isEnabled_ = isAllowed;
  emit enabledChanged();
}

void Command::trigger() {
  if (description_.isAllowed()) description_.act();
}

}  // namespace tessaly
