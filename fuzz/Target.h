// The interface of a fuzz target: a function that takes any bytes and checks what must hold of a
// parser's result.
//
// The same targets run in two ways: in libFuzzer, which generates inputs, and in the replay among
// the tests, which reads them from files.
#pragma once

#include <string_view>

namespace tessaly::fuzz {

// Each target defines this.
void tryInput(std::string_view input);

// Ends the program with a message that names the broken `fact`, unless `holds`. Not assert(), which
// an optimised build leaves out.
void require(bool holds, const char* fact);

}  // namespace tessaly::fuzz
