// The named colours of the program, all opaque. Choose a name by its meaning: some names have equal
// values today, which may change.
#pragma once

#include <array>
#include <string_view>

#include "look/Color.h"

namespace tessaly::MarrowTheme {

// Surfaces, from the window to the fields on its cards.
inline constexpr Color bg = Color::fromRgb(0x121318);
inline constexpr Color bg2 = Color::fromRgb(0x181A22);
inline constexpr Color bg3 = Color::fromRgb(0x232530);

// Text.
inline constexpr Color ink = Color::fromRgb(0xFFFFFF);
inline constexpr Color secondary = Color::fromRgb(0xE5E7EB);
inline constexpr Color muted = Color::fromRgb(0x9CA3AF);

// States and emphasis.
inline constexpr Color accent = Color::fromRgb(0x007AFF);
inline constexpr Color accent2 = Color::fromRgb(0x8B5CF6);
inline constexpr Color success = Color::fromRgb(0x34C759);
inline constexpr Color warning = Color::fromRgb(0xFF9500);
inline constexpr Color error = Color::fromRgb(0xFF3B30);
inline constexpr Color cyan = Color::fromRgb(0x06B6D4);
inline constexpr Color highlight = Color::fromRgb(0xFF9500);

// Kinds of files.
inline constexpr Color video = Color::fromRgb(0x3B82F6);
inline constexpr Color image = Color::fromRgb(0xF59E0B);
inline constexpr Color document = Color::fromRgb(0x8B5CF6);
inline constexpr Color developer = Color::fromRgb(0x22C55E);
inline constexpr Color archive = Color::fromRgb(0xEF4444);
inline constexpr Color other = Color::fromRgb(0x6B7280);

// Three shades each of blue, green, amber, violet and pink.
inline constexpr std::array<Color, 15> folderPalette = {
    Color::fromRgb(0x3B82F6), Color::fromRgb(0x2563EB), Color::fromRgb(0x1D4ED8),
    Color::fromRgb(0x10B981), Color::fromRgb(0x059669), Color::fromRgb(0x047857),
    Color::fromRgb(0xF59E0B), Color::fromRgb(0xD97706), Color::fromRgb(0xB45309),
    Color::fromRgb(0x8B5CF6), Color::fromRgb(0x7C3AED), Color::fromRgb(0x6D28D9),
    Color::fromRgb(0xEC4899), Color::fromRgb(0xDB2777), Color::fromRgb(0xBE185D)};

// One colour of folderPalette, always the same for the same name, in every run. Depends on the
// letters of the name but not on their order.
Color folderColor(std::string_view name);

}  // namespace tessaly::MarrowTheme
