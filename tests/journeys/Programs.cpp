#include "journeys/Programs.h"

#include "platform/OwnExecutable.h"

namespace tessaly {

namespace {

// As a macro, the paths would be part of each compilation, and a build in another folder could not
// use its result.
std::string besideTests(const std::string& name) {
  const std::string own = ownExecutable();
  return own.substr(0, own.rfind('/') + 1) + name;
}

}  // namespace

std::string tessalyProgram() {
  return besideTests("tessaly");
}

std::string hungFolderProgram() {
  return besideTests("tessaly_hung_folder");
}

}  // namespace tessaly
