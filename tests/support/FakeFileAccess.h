// A file system with the items that a test defines. Nothing else exists, and nothing can be read
// unless the test says so. Not thread-safe while a test changes it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/FileAccess.h"

namespace tessaly {

class FakeFileAccess final : public FileAccess {
 public:
  struct File {
    Kind kind = Kind::file;
    bool isReadable = true;
    bool hasEntries = false;
    Values values = {};
  };

  Kind kindOf(const std::string& path) const override { return at(path).kind; }
  bool canList(const std::string& path) const override {
    return at(path).kind == Kind::directory && at(path).isReadable;
  }
  bool hasEntries(const std::string& path) const override {
    return canList(path) && at(path).hasEntries;
  }
  Values valuesOf(const std::string& path) const override {
    examined.push_back(path);
    return at(path).values;
  }
  bool canOpen(const std::string& path) const override { return at(path).isReadable; }
  bool canReadWhole(const std::string& path) const override {
    return at(path).kind == Kind::file && at(path).isReadable;
  }

  std::map<std::string, File> files;
  mutable std::vector<std::string> examined;  // the paths passed to valuesOf()

 private:
  File at(const std::string& path) const {
    const auto found = files.find(path);
    return found != files.end() ? found->second : File{.kind = Kind::nothing, .isReadable = false};
  }
};

}  // namespace tessaly
