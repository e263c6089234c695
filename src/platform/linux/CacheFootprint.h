// Reads a file without leaving more of it in the system's page cache than was there before.
//
// The system's own reading ahead would bring in pages before it can be told which were there, so it
// is turned off, and this class reads ahead itself: it looks what is in the cache, asks for what is
// not, and drops exactly that once it has been read. The system does not tell what is in the cache
// of a file that this user may not change; then it is asked to do the same itself, which it can
// since Linux 6.14 and on some file systems. Where neither works, nothing is dropped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <sys/types.h>
#include <vector>

namespace tessaly {

class CacheFootprint {
 public:
  // `file` is an open descriptor and must outlive the object.
  explicit CacheFootprint(int file);
  // Drops what was asked for and has not been read.
  ~CacheFootprint();
  CacheFootprint(const CacheFootprint&) = delete;
  CacheFootprint& operator=(const CacheFootprint&) = delete;

  // To be called before the bytes from `from` are read, with the end of the data to be read on: a
  // part of the file without holes. `from` never decreases.
  void prepare(std::int64_t from, std::int64_t dataEnd);

  // As pread().
  ssize_t read(char* to, std::size_t count, std::int64_t at);

  // Drops what was not in the cache of everything before `to`.
  void dropUpTo(std::int64_t to);

 private:
  struct Range {
    std::int64_t from = 0;
    std::int64_t to = 0;
  };

  void look(std::int64_t from, std::int64_t to);
  void lookAtPages(std::int64_t from, std::int64_t to);
  void askFor(Range range);

  int file_;
  bool isTold_;  // what is in the cache
  bool canLeaveNothing_ = true;
  std::int64_t looked_ = 0;    // everything before has been looked at
  std::deque<Range> missing_;  // looked at, not in the cache then, and not dropped yet
  std::vector<unsigned char> pages_;
};

}  // namespace tessaly
