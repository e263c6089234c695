// Why an operation of the system failed, and the value that carries either its result or that
// reason. Everything in platform/ that can fail returns a Result; nothing there throws.
//
// Plain values, safe from any thread.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace tessaly {

struct SystemError {
  // What callers tell apart; `code` has the rest.
  enum class Kind {
    notFound,          // the item, or a folder on the way to it, is not there
    alreadyExists,     // something stands where something new should go
    notPermitted,      // the user may not
    readOnly,          // the file system takes no changes
    noSpace,           // the disk, or the user's share of it, is full
    crossesDevices,    // the two ends lie on different file systems
    nameTooLong,       // of one component, or of the whole path
    notADirectory,     // a folder was needed
    isADirectory,      // a file was needed
    tooManyOpenFiles,  // the process, or the system, is out of descriptors
    stale,             // another item stands where the one that was meant stood
    linkOnTheWay,      // a symbolic link stands where a folder was meant, or leads in a circle
    notSupported,      // the system or the file system has no such operation
    other,
  };

  Kind kind = Kind::other;
  std::string path;  // bytes: what the operation was about
  int code = 0;      // errno as the system gave it

  // The one translation of errno values.
  static SystemError fromErrno(int code, std::string_view path);

  // For logs and messages: the path, as bytes, and the system's words for the cause.
  std::string description() const;

  friend bool operator==(const SystemError&, const SystemError&) = default;
};

// A `Value`, or the reason why there is none.
template <class Value>
class [[nodiscard]] Result {
 public:
  // Either is a Result by itself, as in `return error;`.
  // NOLINTNEXTLINE(google-explicit-constructor)
  Result(Value value) : state_(std::in_place_index<0>, std::move(value)) {}
  // NOLINTNEXTLINE(google-explicit-constructor)
  Result(SystemError error) : state_(std::in_place_index<1>, std::move(error)) {}

  bool ok() const { return state_.index() == 0; }
  explicit operator bool() const { return ok(); }

  // Only where ok().
  const Value& value() const& { return std::get<0>(state_); }
  Value& value() & { return std::get<0>(state_); }
  Value&& value() && { return std::get<0>(std::move(state_)); }

  // Only where not ok().
  const SystemError& error() const { return std::get<1>(state_); }

 private:
  std::variant<Value, SystemError> state_;
};

// The outcome of an operation that gives nothing back.
using Outcome = Result<std::monostate>;

inline Outcome succeeded() {
  return std::monostate{};
}

}  // namespace tessaly
