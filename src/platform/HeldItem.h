// One file or folder, held by descriptor: whatever is renamed or put at its path later, this item
// is the one that is read.
//
// No call waits for another program. An item that is neither a file nor a folder (a pipe, a socket,
// a device) is reported by its kind and never opened, so its other end notices nothing. A file
// system that does not answer, such as one on a network, may still block a call.
//
// Use an object on one thread at a time; different objects are independent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/SystemError.h"

namespace tessaly {

class HeldItem {
 public:
  enum class Type : std::uint8_t { file, folder, other };

  // Identifies the item on this machine, whatever its name.
  struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    // Creation time in nanoseconds, 0 if unknown: inode numbers are reused.
    std::uint64_t created = 0;

    friend bool operator==(const Identity&, const Identity&) = default;
  };

  // Facts about the target of a symbolic link, or about the link itself if the target is missing.
  struct Facts {
    Type type = Type::other;
    bool isBrokenLink = false;
    std::int64_t size = 0;  // bytes of content, as reported by the system; for a folder its own
                            // length
    std::optional<double> created;   // seconds since 1970; absent if the file system does not store
                                     // it
    std::optional<double> modified;  // seconds since 1970
    Identity identity;
    std::string linkTarget;  // bytes, as stored; empty for anything but a link
  };

  struct Entry {
    std::string_view name;  // bytes, valid during the call
    bool isFolder = false;  // false for a link, whatever its target
  };

  // `path` must be absolute and may have any length. Links are followed.
  static Result<HeldItem> at(const std::string& path);

  // The same, but a link at the end of `path` is not followed: it is itself the item, with type
  // `other`.
  static Result<HeldItem> itself(const std::string& path);

  HeldItem(HeldItem&& other) noexcept;
  HeldItem& operator=(HeldItem&& other) noexcept;
  ~HeldItem();

  const Facts& facts() const { return facts_; }

  // Opens a file for read(). EINVAL for anything else.
  Outcome openContent();

  // Reads at most `count` bytes from `offset`, and returns their number: fewer at the end of the
  // file, or if the system returns no more at once, and 0 beyond the end.
  Result<std::size_t> read(std::int64_t offset, char* to, std::size_t count) const;

  // Current path of the item, without a link at the end, so that another process can hold it with
  // itself(). Another item may be at the path by then; compare identities. An error if the system
  // does not know the path.
  Result<std::string> ownPath() const;

  // Passes each entry directly in the folder to `take`, in no order, until `take` returns false.
  Outcome forEachEntry(const std::function<bool(const Entry&)>& take) const;

  // Bytes of content of a file in this folder, by its name. 0 for a folder, and if the size cannot
  // be read.
  std::int64_t entrySize(const std::string& name) const;

 private:
  struct Descriptors;

  HeldItem();

  std::string path_;
  Facts facts_;
  bool isLink_ = false;  // whether the path itself is a link
  std::unique_ptr<Descriptors> held_;
};

}  // namespace tessaly
