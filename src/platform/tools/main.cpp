#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "platform/PlatformServices.h"
#include "platform/tools/Tools.h"

int main(int count, char** arguments) {
  using namespace tessaly;
  const std::vector<std::string> args(arguments + (count > 0 ? 1 : 0), arguments + count);
  const std::unique_ptr<TrashCan> trash = platformServices().makeTrashCan();
  const int status =
      tools::run(args, {.out = std::cout, .err = std::cerr}, tools::Services{.trash = *trash});
  if (!std::cout.flush()) {
    std::cerr << "tessaly-tools: the answer cannot be written\n";
    return tools::failed;
  }
  return status;
}
