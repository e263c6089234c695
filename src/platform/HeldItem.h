// One file or folder, held fast to be looked at: whatever is renamed or put into its place
// meanwhile, it is this one that is read.
//
// No call here waits for another program. What is neither a file nor a folder (a pipe, a socket, a
// device) is told by its kind and never opened, so that nothing happens at its other end. A file
// system that does not answer, as one on a network may, holds up the call all the same.
//
// One object is used by one thread at a time; several objects by as many threads as there are.
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

  // Which item of the machine it is, whatever it is called.
  struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    // In nanoseconds, 0 where it is not kept: inodes are used again.
    std::uint64_t created = 0;

    friend bool operator==(const Identity&, const Identity&) = default;
  };

  // Of what a symbolic link leads to, or of the link itself where that is not there.
  struct Facts {
    Type type = Type::other;
    bool isBrokenLink = false;
    std::int64_t size = 0;  // bytes of content, as the system tells it; of a folder its own length
    std::optional<double> created;   // seconds since 1970; absent where that is not kept
    std::optional<double> modified;  // seconds since 1970
    Identity identity;
    std::string linkTarget;  // bytes, as it is written; empty for anything but a link
  };

  struct Entry {
    std::string_view name;  // bytes, valid until the call returns
    bool isFolder = false;  // a link is none, wherever it leads
  };

  // `path` is absolute and of any length. Links are followed.
  static Result<HeldItem> at(const std::string& path);

  // The same, but a link at the end of `path` is not followed: it is itself the item, and `other`.
  static Result<HeldItem> itself(const std::string& path);

  HeldItem(HeldItem&& other) noexcept;
  HeldItem& operator=(HeldItem&& other) noexcept;
  ~HeldItem();

  const Facts& facts() const { return facts_; }

  // Opens a file for read(). EINVAL for anything else.
  Outcome openContent();

  // Reads at most `count` bytes that stand at `offset`, and gives how many they were: fewer at the
  // end of the file, or where the system gives no more at once, and 0 behind it.
  Result<std::size_t> read(std::int64_t offset, char* to, std::size_t count) const;

  // Where it stands, with no link at the end: for another process to hold it as well, by itself().
  // What stands there then need not be the same any more, which its identity tells. An error where
  // the system cannot tell.
  Result<std::string> ownPath() const;

  // Tells of everything that stands directly in a folder, in no order, until `take` returns false.
  Outcome forEachEntry(const std::function<bool(const Entry&)>& take) const;

  // Bytes of content of a file in this folder, by its name. 0 for a folder, and for what cannot be
  // asked.
  std::int64_t entrySize(const std::string& name) const;

 private:
  struct Descriptors;

  HeldItem();

  std::string path_;
  Facts facts_;
  bool isLink_ = false;  // what stands at the path
  std::unique_ptr<Descriptors> held_;
};

}  // namespace tessaly
