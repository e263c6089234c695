// What the program says to the user: the short message (toast), and the failures that stay until
// they are dismissed.
//
// Main thread only.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "platform/Dispatch.h"
#include "reclaim/FailureText.h"
#include "reclaim/Trash.h"
#include "session/FieldChanges.h"

namespace tessaly {

// Shows a short message as part of a step. How the other parts of the session are given Messages.
using Flash = std::function<void(FieldChanges& changes, const std::string& text)>;

class Messages : public QObject {
  Q_OBJECT

 public:
  static constexpr std::size_t failuresLimit = 50;

  // `dispatch` outlives the messages.
  explicit Messages(Dispatch& dispatch) : dispatch_(dispatch) {}

  const std::optional<std::string>& toast() const { return toast_; }
  // What failed and was not dismissed, the latest last; never more than failuresLimit.
  const std::vector<std::string>& failures() const { return failures_; }
  // The latest of them.
  std::optional<std::string> failure() const;

  // Shows a short message, and takes it away 2.8 seconds later unless a newer one is shown then.
  void flash(const std::string& text);
  void flash(FieldChanges& changes, const std::string& text);

  // Tells of something that failed and that the user has to know of. It stays, whatever else is
  // flashed, until it is dismissed. A later failure comes before it; once that one is dismissed,
  // this one is told again. The same text is told once.
  void tellFailure(const std::string& text);
  void tellFailure(FieldChanges& changes, const std::string& text);
  // Tells in one line of all items that did not move; nothing if there are none.
  void tellFailures(FieldChanges& changes, const std::vector<Trash::Failure>& failures,
                    FailureText::Act act);
  // Of the failure that is told, the latest one.
  Q_INVOKABLE void dismissFailure();

 signals:
  void toastChanged();
  void failureChanged();

 private:
  Dispatch& dispatch_;
  std::optional<std::string> toast_;
  std::vector<std::string> failures_;
};

}  // namespace tessaly
