// The renderer of the window's scene. Choose it once, after the QApplication and before the first
// window.
#pragma once

namespace tessaly {

// Makes Qt Quick use its software renderer unless a graphics card draws: without OpenGL it would
// not start, and OpenGL on the processor needs several cores for the same picture. Keeps a renderer
// set in the environment.
void chooseRenderer();

}  // namespace tessaly
