// A path that QML passes from a row to an operation: opaque, so that it keeps its bytes.
#pragma once

#include <string>
#include <utility>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class PathHandle {
  Q_GADGET
  QML_VALUE_TYPE(pathHandle)
  // False for a handle without a path.
  Q_PROPERTY(bool valid READ isValid CONSTANT)

 public:
  PathHandle() = default;
  explicit PathHandle(std::string path) : path_(std::move(path)) {}

  bool isValid() const { return !path_.empty(); }
  const std::string& path() const { return path_; }

  friend bool operator==(const PathHandle&, const PathHandle&) = default;

 private:
  std::string path_;
};

}  // namespace tessaly

Q_DECLARE_METATYPE(tessaly::PathHandle)
