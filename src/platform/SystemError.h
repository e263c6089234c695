// The reason why an operation of the system failed, and the type for its result or that reason.
// Everything in platform/ that can fail returns a Result; nothing there throws.
//
// Plain values, safe from any thread.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace tessaly {

struct SystemError {
  // The kinds that callers distinguish; `code` has the details.
  enum class Kind {
    notFound,          // the item, or a folder in its path, does not exist
    alreadyExists,     // an item exists at the target
    notPermitted,      // the user lacks the permission
    readOnly,          // the file system is read-only
    noSpace,           // the disk, or the user's quota on it, is full
    crossesDevices,    // source and target are on different file systems
    nameTooLong,       // of one component, or of the whole path
    notADirectory,     // a folder was expected
    isADirectory,      // a file was expected
    tooManyOpenFiles,  // the process, or the system, is out of descriptors
    stale,             // another item is now at the path of the intended one
    changed,           // the item is still there, but no longer as it was expected
    linkOnTheWay,      // a symbolic link is where a folder was expected, or links form a loop
    notSupported,      // the system or the file system does not support the operation
    other,
  };

  Kind kind = Kind::other;
  std::string path;  // bytes: the path that the operation was about
  int code = 0;      // errno from the system

  // The only translation of errno values.
  static SystemError fromErrno(int code, std::string_view path);

  // For logs and messages: the path, as bytes, and the system's text for the error.
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

  // Requires ok().
  const Value& value() const& { return std::get<0>(state_); }
  Value& value() & { return std::get<0>(state_); }
  Value&& value() && { return std::get<0>(std::move(state_)); }

  // Requires not ok().
  const SystemError& error() const { return std::get<1>(state_); }

 private:
  std::variant<Value, SystemError> state_;
};

// The result of an operation without a value.
using Outcome = Result<std::monostate>;

inline Outcome succeeded() {
  return std::monostate{};
}

}  // namespace tessaly
