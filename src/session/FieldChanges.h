// One step of the session: sets fields of one or several parts, and announces the changed ones once
// all are set. So a view that reads another field when it is notified never sees half a step.
//
// Main thread only.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include <QMetaMethod>
#include <QObject>
#include <QPointer>

namespace tessaly {

class FieldChanges {
 public:
  // Does nothing if the field has the value already.
  template <class Part, class Field, class Value>
  void set(Part* part, Field& field, Value&& value, void (Part::*changed)()) {
    if (field == value) return;
    field = std::forward<Value>(value);
    note(part, changed);
  }

  // For a field that was changed in place. A field that changes twice in a step is announced once.
  template <class Part>
  void note(Part* part, void (Part::*changed)()) {
    const QMetaMethod signal = QMetaMethod::fromSignal(changed);
    const bool isNoted = std::any_of(changed_.begin(), changed_.end(), [&](const Change& change) {
      return change.part == part && change.signal == signal;
    });
    if (!isNoted) changed_.push_back({part, signal});
  }

  // Emits the signals in the order of the changes, without those of deleted parts. Must be the last
  // call of a step: a receiver may start another step, or delete the session.
  void announce() {
    for (const Change& change : std::exchange(changed_, {})) {
      if (change.part) change.signal.invoke(change.part, Qt::DirectConnection);
    }
  }

 private:
  struct Change {
    QPointer<QObject> part;
    QMetaMethod signal;
  };

  std::vector<Change> changed_;
};

// A step that changes one field.
template <class Part, class Field, class Value>
void setField(Part* part, Field& field, Value&& value, void (Part::*changed)()) {
  FieldChanges changes;
  changes.set(part, field, std::forward<Value>(value), changed);
  changes.announce();
}

}  // namespace tessaly
