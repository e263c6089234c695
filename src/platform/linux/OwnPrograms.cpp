#include "platform/OwnPrograms.h"

#include <unistd.h>

#include "platform/OwnExecutable.h"

namespace tessaly::OwnPrograms {

std::string path(std::string_view name) {
  const std::string own = ownExecutable();
  return pathFrom(own.substr(0, own.rfind('/')), name);
}

std::string pathFrom(const std::string& folder, std::string_view name) {
  std::string beside = folder + "/" + std::string(name);
  if (::access(beside.c_str(), X_OK) == 0) return beside;
  return folder + "/../libexec/tessaly/" + std::string(name);
}

}  // namespace tessaly::OwnPrograms
