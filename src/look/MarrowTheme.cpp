#include "look/MarrowTheme.h"

#include "platform/UnicodeText.h"

namespace tessaly::MarrowTheme {

Color folderColor(std::string_view name) {
  return folderPalette[UnicodeText::scalarSum(name) % folderPalette.size()];
}

}  // namespace tessaly::MarrowTheme
