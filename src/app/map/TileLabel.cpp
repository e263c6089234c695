#include "app/map/TileLabel.h"

#include <algorithm>
#include <cstddef>

#include "app/model/KindSymbol.h"
#include "platform/UnicodeText.h"
#include "scan/Format.h"

namespace tessaly {
namespace {

// The space for icon, paddings and, if shown, the size; and for one character.
constexpr double besideName = 20;
constexpr double besideNameAndSize = 80;
constexpr double characterWidth = 7.2;
constexpr int fewestCharacters = 3;

}  // namespace

std::optional<TileLabel> TileLabel::of(const TreemapRect& rect) {
  if (rect.width <= 38 || rect.height <= 20) return std::nullopt;
  const bool showSize = rect.width > 90;
  const bool isLarge = !rect.nested && rect.width > 180 && rect.height > 80;
  TileLabel label;
  label.symbol = KindSymbol::of(rect.node);
  label.name = shortened(rect.node.name(), rect.width, showSize);
  label.nameSize = isLarge ? 12 : 11;
  label.topPadding = rect.nested ? 4 : 5;
  if (showSize) label.size = Format::bytes(rect.node.size());
  return label;
}

std::string TileLabel::shortened(std::string_view name, double width, bool besideSize) {
  const double room = width - (besideSize ? besideNameAndSize : besideName);
  const int fitting = static_cast<int>(room / characterWidth);
  const int limit = std::max(fitting, fewestCharacters);
  // Every character has at least one byte, so most names need no counting.
  if (name.size() <= static_cast<std::size_t>(limit)) return std::string(name);
  if (UnicodeText::graphemeCount(name) <= static_cast<std::size_t>(limit)) return std::string(name);
  const int kept = fitting > fewestCharacters ? fitting - 1 : fewestCharacters;
  return std::string(UnicodeText::firstGraphemes(name, static_cast<std::size_t>(kept))) + "…";
}

}  // namespace tessaly
