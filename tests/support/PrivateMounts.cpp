#include "support/PrivateMounts.h"

#include <cerrno>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "support/ForkedChild.h"
#include "support/PlainFiles.h"

namespace tessaly {

namespace {

// Users other than root may mount only in a user namespace of their own, and the owners of files
// must be mapped in it.
bool enterNamespace() {
  if (geteuid() == 0) return unshare(CLONE_NEWNS) == 0;
  const auto map = [](unsigned id) { return std::to_string(id) + " " + std::to_string(id) + " 1"; };
  const std::string users = map(geteuid());
  const std::string groups = map(getegid());
  if (unshare(CLONE_NEWNS | CLONE_NEWUSER) != 0) return false;
  putFile("/proc/self/setgroups", "deny");
  putFile("/proc/self/uid_map", users);
  putFile("/proc/self/gid_map", groups);
  return true;
}

}  // namespace

std::string inPrivateMounts(const std::function<std::string()>& body) {
  return inForkedChild([&]() -> std::string {
    if (!enterNamespace()) return refusal();
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return refusal();
    return body();
  });
}

std::string refusal(Need need) {
  return "refused: " + needs(need, std::strerror(errno));
}

}  // namespace tessaly
