#include "session/Messages.h"

#include <chrono>

#include <QPointer>

namespace tessaly {

namespace {

constexpr std::chrono::milliseconds toastTime(2800);

}  // namespace

std::optional<std::string> Messages::failure() const {
  return failures_.empty() ? std::nullopt : std::optional(failures_.back());
}

void Messages::flash(const std::string& text) {
  FieldChanges changes;
  flash(changes, text);
  changes.announce();
}

void Messages::flash(FieldChanges& changes, const std::string& text) {
  // Compares texts only: if the same text is shown again, it disappears with the timer of the
  // first.
  dispatch_.after(toastTime, Dispatch::Queue::main, [messages = QPointer(this), text] {
    if (!messages || messages->toast_ != text) return;
    setField(messages.data(), messages->toast_, std::optional<std::string>(),
             &Messages::toastChanged);
  });
  changes.set(this, toast_, std::optional(text), &Messages::toastChanged);
}

void Messages::tellFailure(const std::string& text) {
  FieldChanges changes;
  tellFailure(changes, text);
  changes.announce();
}

void Messages::tellFailure(FieldChanges& changes, const std::string& text) {
  if (!failures_.empty() && failures_.back() == text) return;
  std::erase(failures_, text);
  failures_.push_back(text);
  if (failures_.size() > failuresLimit) failures_.erase(failures_.begin());
  changes.note(this, &Messages::failureChanged);
}

void Messages::tellFailures(FieldChanges& changes, const std::vector<Trash::Failure>& failures,
                            FailureText::Act act) {
  if (!failures.empty()) tellFailure(changes, FailureText::line(failures, act));
}

void Messages::dismissFailure() {
  if (failures_.empty()) return;
  FieldChanges changes;
  failures_.pop_back();
  changes.note(this, &Messages::failureChanged);
  changes.announce();
}

}  // namespace tessaly
