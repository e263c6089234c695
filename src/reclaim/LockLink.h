// Links that programs make as locks. They dangle by design: their text names the process that holds
// the lock.
#pragma once

#include <string_view>

namespace tessaly {

// Whether a link of this name and text is such a lock: of Chromium or a browser made from it
// ("SingletonLock" -> "host-pid", "SingletonCookie" -> a number, "SingletonSocket" -> a socket), of
// Firefox ("lock" -> "address:+pid") or of Emacs (".#file" -> "user@host.pid", maybe with ":" and
// the time of the system's start). Pure, safe from any thread.
bool isLockLink(std::string_view name, std::string_view text);

}  // namespace tessaly
