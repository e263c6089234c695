// Enumerates everything below one folder, with attributes, in pre-order: everything below a
// directory comes before the directory's next sibling.
//
// The caller takes the items one by one with next(). Meanwhile threads of the walk read ahead: each
// directory is one unit of work. The caller's thread reads a directory that it needs and that no
// thread has started, and reads ahead instead of waiting. Memory is bounded: at most 4,096
// directories and about 32,000 items are read ahead.
//
// Links are reported, never followed. Directories are opened relative to their parents'
// descriptors, so depth and length of paths have no limit. When descriptors run short, those of
// directories that are still needed are closed and reopened later; a walk needs at least one. An
// item that cannot be read is reported without attributes or contents, and passed to `unreadable`.
// Pseudo file systems and automount points are reported and never entered, as are mounts whose
// contents the walk also sees elsewhere.
//
// An object makes one walk and is used by one thread. The destructor joins the walk's threads.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/MountSnapshot.h"

namespace tessaly {

class DirectoryWalk {
 public:
  enum class Type : std::uint8_t { directory, file, link, other };

  struct Item {
    std::string_view name;  // valid until the next call of next()
    Type type = Type::other;
    bool hasAttributes = false;      // whether the next two could be read; false for links
    std::int64_t allocatedSize = 0;  // bytes on disk; for a directory its own length
    double mtime = 0;                // seconds since 1970
    std::uint32_t depth = 0;         // 1 for items directly in the root
    std::uint8_t mark = 0;           // mark of the directory that contains the item
    // A large directory is read in several parts; a name that changes between them may be reported
    // twice.
    bool mayComeTwice = false;
  };

  // A directory about to be read, or an item that could not be read.
  class Candidate {
   public:
    virtual std::string path() const = 0;  // absolute, built on each call

    std::string_view name;    // empty for the root
    std::uint32_t depth = 0;  // 1 for items directly in the root
    std::uint8_t mark = 0;    // mark of the directory that contains it

   protected:
    ~Candidate() = default;
  };

  struct Descent {
    bool enter = true;
    std::uint8_t mark = 0;  // mark for all items directly in it
  };

  // Decides whether a directory is entered. Called from any thread and ahead of next(), once for
  // each directory and again for each directory on the path to a mount, so it must be a pure
  // function of the candidate; with one thread, only from the caller's. Not called for directories
  // that are never entered. A directory that is not entered is reported without attributes.
  using Decide = std::function<Descent(const Candidate&)>;

  // Called for each item that exists and could not be read completely, with the errno: a directory
  // that cannot be opened or listed, the root included, and any other item whose attributes cannot
  // be read. Called once per item; not for items that vanished since their directory was listed,
  // nor for directories that are never entered. Called on the thread that constructs the walk and
  // calls next(), during these calls. The candidate is valid during the call.
  using Unreadable = std::function<void(const Candidate& item, int code)>;

  // An item that is no directory, as it was read.
  struct Entry {
    std::string_view name;
    Type type = Type::other;
    bool hasAttributes = false;  // whether the next two could be read; false for links
    std::int64_t length = 0;     // bytes of content
    std::uint32_t owner = 0;     // the user's id
  };

  // Whether an item that is no directory is reported. Called from any thread and ahead of next(),
  // so it must be a pure function of the entry. Not called for directories, which are always
  // reported, nor for an item that exists and whose attributes cannot be read: it is reported
  // without them.
  using Keep = std::function<bool(const Entry&)>;

  // What a walk reads and reports.
  struct Reading {
    // Without attributes only directories have some. The walk then needs no call to the system for
    // any other item, except on file systems that do not list the types of their items.
    bool attributes = true;
    // Null: every item is reported. What is dropped costs the thread that calls next() nothing.
    Keep keep = {};
    // Whether the walk enters file systems below the root that are served by another machine or
    // program, and may never answer.
    bool entersRemote = true;
    // Ends the walk as stop() does. next() asks it on the caller's thread, between the portions in
    // which it reads folders: most of them may have no item that is kept.
    std::function<bool()> isCancelled = {};
  };

  // `root` is an absolute path without links. `threads` includes the caller's; 0 means two to four,
  // depending on the number of cores. If the system refuses a thread, the walk uses fewer, at least
  // the caller's. `mounts` are the current mounts; null: the walk reads them.
  DirectoryWalk(const std::string& root, Decide decide, int threads = 0,
                const std::shared_ptr<const MountSnapshot>& mounts = nullptr,
                Unreadable unreadable = {}, Reading reading = everything());
  ~DirectoryWalk();
  DirectoryWalk(const DirectoryWalk&) = delete;
  DirectoryWalk& operator=(const DirectoryWalk&) = delete;

  // Whether the root could be opened as a directory. If not, the walk has no items.
  bool isOpen() const;

  // The next item, or null at the end. Valid until the next call.
  const Item* next();

  // Abandons the walk: the threads start to read nothing more, and next() returns null from now on.
  // Does not wait for them.
  void stop();

  // All items, with attributes.
  static Reading everything() { return {}; }

  // Number of entries directly in `root`, links included; 0 if it cannot be read.
  static std::size_t countEntries(const std::string& root);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tessaly
