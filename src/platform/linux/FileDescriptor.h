// A file descriptor that the destructor closes.
#pragma once

#include <unistd.h>
#include <utility>

namespace tessaly {

class FileDescriptor {
 public:
  explicit FileDescriptor(int number = -1) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() {
    if (number_ >= 0) ::close(number_);
  }

  int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  // Closes it now and returns the result: -1 with errno set if written data could not be stored.
  // The descriptor is closed in both cases.
  int close() { return ::close(std::exchange(number_, -1)); }

 private:
  int number_;
};

}  // namespace tessaly
