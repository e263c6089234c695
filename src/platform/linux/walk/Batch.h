// One read operation's portion of a directory's entries. A directory of ordinary size is one batch,
// a large one a chain of them, which several threads can read at once.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <sys/types.h>

#include "platform/DirectoryWalk.h"
#include "platform/linux/walk/ClosedMounts.h"

namespace tessaly::walk {

struct Folder;

struct Record {
  enum class Holds : std::uint8_t { failure, attributes, child };

  union {
    std::int64_t failure;  // the errno of reading the attributes, or 0
    std::int64_t allocatedSize;
    Folder* child;  // for a directory that is entered
  };
  double mtime;  // with attributes
  std::uint32_t nameOffset;
  std::uint16_t nameLength;
  DirectoryWalk::Type type;
  Holds holds;  // which member of the union; "failure" for a directory that is not entered
};
static_assert(sizeof(Record) == 24);

struct Batch {
  enum class State : std::uint8_t { pending, claimed, done };

  Folder* folder = nullptr;
  Batch* next = nullptr;  // the rest of a large directory; set before `state` is done
  off_t position = 0;     // position in the directory stream where reading begins
  std::atomic<State> state = State::pending;

  // Neighbours among the unfinished batches, in pre-order. Guarded by the walk's mutex.
  Batch* before = nullptr;
  Batch* after = nullptr;

  // The errno if the directory could not be read at all, or not to its end from this portion on; 0
  // for none.
  int failure = 0;
  std::uint32_t count = 0;
  std::unique_ptr<std::byte[]> data;  // `count` records, then the names, each ended by a NUL

  const Record* records() const { return reinterpret_cast<const Record*>(data.get()); }
  const char* names() const {
    return reinterpret_cast<const char*>(data.get()) + count * sizeof(Record);
  }
  std::string_view name(const Record& record) const {
    return {names() + record.nameOffset, record.nameLength};
  }
};

// A directory that the walk enters. Exists from the reading of its parent until the consumer leaves
// it; `name` points into a batch of the parent, which exists as long.
struct Folder {
  Folder* parent = nullptr;
  std::string_view name;
  std::uint32_t depth = 0;
  std::uint8_t mark = 0;
  const ClosedMounts* closed = nullptr;  // paths below that are not entered, if any

  // Attributes found at opening. Written by the reader of the first batch.
  bool hasAttributes = false;
  double mtime = 0;
  std::int64_t length = 0;
  dev_t device = 0;
  ino_t inode = 0;

  // The descriptor and its users. Guarded by the walk's mutex; see OpenFolders.
  int descriptor = -1;
  int needs = 0;  // directories inside that are not opened yet, plus one for a stream not read to
                  // its end
  int pins = 0;   // threads that are using the descriptor
  Folder* older = nullptr;
  Folder* newer = nullptr;
  bool listed = false;

  Batch first;
};

}  // namespace tessaly::walk
