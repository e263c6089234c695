// Reads a file without leaving more of it in the system's page cache than was there before.
//
// The system's own reading ahead would bring in pages before it can be told which were there, so it
// is turned off, and this class reads ahead itself: it looks what is in the cache, asks for what is
// not, and drops exactly that once it has been read. A file system may not tell what is in the
// cache, and the system does not tell it of a file that this user may not write; then nothing is
// asked for and nothing dropped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
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
  std::int64_t looked_ = 0;    // everything before has been looked at
  std::deque<Range> missing_;  // looked at, not in the cache then, and not dropped yet
  std::vector<unsigned char> pages_;
};

}  // namespace tessaly
