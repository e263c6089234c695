// One step of the session: sets fields, and announces those that changed once all of them are set.
// A view that is told of one field and looks at another thus never sees half a step. Private to the
// session's own sources.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include <QPointer>

#include "session/ScanSession.h"

namespace tessaly {

class ScanSession::FieldChanges {
 public:
  explicit FieldChanges(ScanSession& session) : session_(&session) {}

  // Setting the value that a field has already is no change.
  template <class Field, class Value>
  void set(Field& field, Value&& value, Signal changed) {
    if (field == value) return;
    field = std::forward<Value>(value);
    note(changed);
  }

  // For a field that was changed in place. One that changes twice in a step is announced once.
  void note(Signal changed) {
    if (std::ranges::find(changed_, changed) == changed_.end()) changed_.push_back(changed);
  }

  // Emits the signals in the order of the changes. The last thing to do in a step: whoever hears of
  // it may take the next one, or end the session.
  void announce() {
    for (const Signal changed : std::exchange(changed_, {})) {
      if (session_) emit(session_->*changed)();
    }
  }

 private:
  QPointer<ScanSession> session_;
  std::vector<Signal> changed_;
};

template <class Field>
void ScanSession::setField(Field& field, Field value, Signal changed) {
  FieldChanges changes(*this);
  changes.set(field, std::move(value), changed);
  changes.announce();
}

}  // namespace tessaly
