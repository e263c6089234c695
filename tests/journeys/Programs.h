// The programs that journeys start, by their paths. They lie beside the program of the tests.
#pragma once

#include <string>

namespace tessaly {

std::string tessalyProgram();

// Mounts a folder that does not answer, and starts a program that is given to it.
std::string hungFolderProgram();

}  // namespace tessaly
