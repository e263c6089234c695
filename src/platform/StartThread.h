// Threads where there may be no more of them: a user has only so many.
#pragma once

#include <functional>
#include <thread>

namespace tessaly {

// Starts a thread that runs `body`, which must not throw. Where the system refuses, what is given
// back is not joinable, and `body` never runs. Safe from any thread.
std::thread startThread(const std::function<void()>& body);

// The same as a value, for tests that let it refuse.
using StartThread = std::function<std::thread(const std::function<void()>& body)>;

}  // namespace tessaly
