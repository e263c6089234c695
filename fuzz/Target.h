// What a fuzz target is made of: one function that takes any bytes and requires what must hold of
// what a parser makes of them.
//
// The same targets run in two ways: by libFuzzer, which makes up inputs, and by the replay among
// the tests, which takes them from files.
#pragma once

#include <string_view>

namespace tessaly::fuzz {

// Each target defines this.
void tryInput(std::string_view input);

// Ends the program with a message that names the broken `fact`, unless it holds. Not an assertion
// of the language, which an optimised build leaves out.
void require(bool holds, const char* fact);

}  // namespace tessaly::fuzz
