// How the window's scene is drawn. To be chosen once, after QApplication and before the first
// window.
#pragma once

namespace tessaly {

// Has Qt Quick draw with its own software renderer where no graphics card does the work: without
// OpenGL it would not start at all, and an OpenGL that runs on the processor takes the time of
// several cores for the same picture. A renderer that the environment asks for is left alone.
void chooseRenderer();

}  // namespace tessaly
