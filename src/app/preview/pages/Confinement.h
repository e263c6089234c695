// What this process may take of the machine while it is at a foreign file, and how it comes to its
// end. Each call is made once, on the first thread, in this order.
#pragma once

#include <optional>
#include <string>

namespace tessaly::Confinement {

// No more memory than decoding takes, no files but those that it reads, and no record of a crash. A
// request for memory beyond ends the process with ReaderAnswer::outOfMemory, where its library does
// not go on without.
void limitResources();

// Gives the descriptor of the answer, which had been standard output: what libraries print is lost.
// -1 where that cannot be.
int takeAnswer();

// Waits for one request on standard input. None when there is not one to come.
std::optional<std::string> awaitRequest();

// From here on the process ends with its time, and as soon as the other end of standard input is
// closed: with whoever has asked.
void endWithRequest(double seconds);

}  // namespace tessaly::Confinement
