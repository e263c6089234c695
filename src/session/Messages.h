// The program's messages to the user: the short one (toast), and failures, which stay until they
// are dismissed.
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

// Shows a short message as part of a step. The other parts of the session get this function instead
// of Messages.
using Flash = std::function<void(FieldChanges& changes, const std::string& text)>;

class Messages : public QObject {
  Q_OBJECT

 public:
  static constexpr std::size_t failuresLimit = 50;

  // `dispatch` must outlive the messages.
  explicit Messages(Dispatch& dispatch) : dispatch_(dispatch) {}

  const std::optional<std::string>& toast() const { return toast_; }
  // The failures that were not dismissed, the latest last; at most failuresLimit.
  const std::vector<std::string>& failures() const { return failures_; }
  // The latest failure.
  std::optional<std::string> failure() const;

  // Shows a short message for 2.8 seconds, or until a newer one replaces it.
  void flash(const std::string& text);
  void flash(FieldChanges& changes, const std::string& text);

  // Shows a failure that the user must know of. It stays until it is dismissed, whatever toasts are
  // shown. A later failure covers it until that one is dismissed. The same text is kept once.
  void tellFailure(const std::string& text);
  void tellFailure(FieldChanges& changes, const std::string& text);
  // Shows all items that were not moved as one failure; does nothing if there are none.
  void tellFailures(FieldChanges& changes, const std::vector<Trash::Failure>& failures,
                    FailureText::Act act);
  // Dismisses the failure on screen, the latest one.
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
