#include "system/ToolText.h"

namespace tessaly {

std::string toolText(const Shell::Run& run, const std::string& path,
                     const std::vector<std::string>& args, double timeout) {
  try {
    return run ? run(path, args, timeout) : Shell::run(path, args, timeout);
  } catch (...) {
    return {};
  }
}

}  // namespace tessaly
