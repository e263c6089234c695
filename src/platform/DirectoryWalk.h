// Enumerates all that lies below one folder, with attributes, in pre-order: everything below a
// directory comes before the directory's next sibling.
//
// The caller takes the items one by one with next(). Meanwhile threads of the walk read ahead: each
// directory is a piece of work, and the caller's own thread reads whatever it needs that nobody has
// read yet, and whatever comes next while it would otherwise wait. Memory is bounded: at most 4,096
// directories and some 32,000 items are read ahead.
//
// Links are reported, never followed. Directories are opened relative to their parents'
// descriptors, so depth and length of paths have no limit. When descriptors run short, those of
// directories that are still needed are closed and opened again later; one is enough for a walk.
// What cannot be read is reported without attributes or contents, and told to who wants to know.
// Pseudo file systems and automount points are reported and
// never entered, nor are mounts that show only what the walk sees at another place as well.
//
// One object, one walk, one thread that calls next(). The destructor joins the walk's threads.
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
    bool hasAttributes = false;      // whether the next two could be read; links have none
    std::int64_t allocatedSize = 0;  // bytes on disk; of a directory its own length
    double mtime = 0;                // seconds since 1970
    std::uint32_t depth = 0;         // 1 directly in the root
    std::uint8_t mark = 0;           // mark of the directory that holds the item
    // A large directory is read in several runs; a name changed between them may come again.
    bool mayComeTwice = false;
  };

  // A directory about to be read, or an item that could not be.
  class Candidate {
   public:
    virtual std::string path() const = 0;  // absolute, put together on each call

    std::string_view name;    // empty for the root
    std::uint32_t depth = 0;  // 1 directly in the root
    std::uint8_t mark = 0;    // mark of the directory that holds it

   protected:
    ~Candidate() = default;
  };

  struct Descent {
    bool enter = true;
    std::uint8_t mark = 0;  // handed on to all items directly in it
  };

  // Says whether a directory is entered. Called from any thread and ahead of next(), once for each
  // directory and once more for each that leads to a mount, so it must be a pure function of the
  // candidate; with one thread, from the caller's alone. Not called for what is never entered. A
  // directory that is not entered is reported without attributes.
  using Decide = std::function<Descent(const Candidate&)>;

  // Told of each item that is there and could not be read, or not to its end, and of the errno: a
  // directory that cannot be opened or listed, whether it is the root or below it, and any other
  // item whose attributes cannot be had. Each item is told once. What has vanished since its
  // directory was listed is not told, nor what is never entered. Called on the thread that makes
  // the walk and calls next(), during these two. The candidate is valid during the call.
  using Unreadable = std::function<void(const Candidate& item, int code)>;

  // `root` is an absolute path without links. `threads` counts the caller's; 0 means two to four,
  // by the number of cores. Where the system refuses a thread there are fewer, down to the caller's
  // alone. `mounts` is what the walk takes for what is mounted; where it is null, the walk asks.
  DirectoryWalk(const std::string& root, Decide decide, int threads = 0,
                const std::shared_ptr<const MountSnapshot>& mounts = nullptr,
                Unreadable unreadable = {});
  ~DirectoryWalk();
  DirectoryWalk(const DirectoryWalk&) = delete;
  DirectoryWalk& operator=(const DirectoryWalk&) = delete;

  // Whether the root could be opened as a directory. If not, there are no items.
  bool isOpen() const;

  // The next item, or null at the end. Valid until the next call.
  const Item* next();

  // For a walk that nobody wants any more: the threads begin to read nothing further, and next()
  // gives null from here on. Waits for none of them.
  void stop();

  // Names directly in `root`, links included; 0 if it cannot be read.
  static std::size_t countEntries(const std::string& root);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tessaly
