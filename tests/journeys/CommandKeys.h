// The keys of the window's commands.
#pragma once

#include <QtCore/Qt>

namespace tessaly {

struct Keys {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
};

inline constexpr Qt::KeyboardModifiers command = Qt::ControlModifier;
inline constexpr Qt::KeyboardModifiers commandShift = Qt::ControlModifier | Qt::ShiftModifier;
inline constexpr Qt::KeyboardModifiers commandOption = Qt::ControlModifier | Qt::AltModifier;

// The fourteen commands with keys.
inline constexpr Keys keysOfCommands[] = {
    {Qt::Key_F, command},           {Qt::Key_Space, commandShift}, {Qt::Key_L, commandShift},
    {Qt::Key_K, command},           {Qt::Key_W, commandOption},    {Qt::Key_E, commandShift},
    {Qt::Key_BracketLeft, command}, {Qt::Key_R, command},          {Qt::Key_L, command},
    {Qt::Key_Y, command},           {Qt::Key_A, command},          {Qt::Key_C, commandShift},
    {Qt::Key_Z, commandOption},     {Qt::Key_Backspace, command},
};

}  // namespace tessaly
