// Starts threads where the system may refuse them: the number per user is limited.
#pragma once

#include <functional>
#include <thread>

namespace tessaly {

// Starts a thread that runs `body`, which must not throw. If the system refuses, the result is not
// joinable, and `body` never runs. Safe from any thread.
std::thread startThread(const std::function<void()>& body);

// The type of startThread(), so that tests can pass a function that refuses.
using StartThread = std::function<std::thread(const std::function<void()>& body)>;

}  // namespace tessaly
