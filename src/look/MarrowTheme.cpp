#include "look/MarrowTheme.h"

#include <cstddef>

#include "platform/UnicodeText.h"

namespace tessaly::MarrowTheme {

Color folderColor(std::string_view name) {
  return folderPalette[static_cast<std::size_t>(scalarSum(name)) % folderPalette.size()];
}

}  // namespace tessaly::MarrowTheme
