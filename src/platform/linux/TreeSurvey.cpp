#include "platform/TreeSurvey.h"

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/IdentityFromStatus.h"
#include "platform/linux/NameInFolder.h"
#include "platform/linux/trash/ItemLocation.h"
#include "platform/linux/trash/TreePass.h"

namespace tessaly::TreeSurvey {

namespace {

using Kind = FileIdentity::Kind;

// Mixes the bits of a number.
std::uint64_t spread(std::uint64_t bits) {
  bits ^= bits >> 32U;
  bits *= 0xd6e8feb86659fd93U;
  bits ^= bits >> 32U;
  return bits * 0xd6e8feb86659fd93U;
}

std::uint64_t fingerprintOf(const std::string& path, const struct stat& status) {
  std::uint64_t print = std::hash<std::string>()(path);
  for (const std::uint64_t part :
       {static_cast<std::uint64_t>(status.st_mode), static_cast<std::uint64_t>(status.st_dev),
        static_cast<std::uint64_t>(status.st_ino), static_cast<std::uint64_t>(status.st_size),
        static_cast<std::uint64_t>(status.st_mtim.tv_sec),
        static_cast<std::uint64_t>(status.st_mtim.tv_nsec),
        static_cast<std::uint64_t>(status.st_ctim.tv_sec),
        static_cast<std::uint64_t>(status.st_ctim.tv_nsec)}) {
    print = spread(print + part);
  }
  return print;
}

int obstacleTo(int wanted, const FileDescriptor& folder, const char* name, int flags = 0) {
  return ::faccessat(folder.get(), name, wanted, AT_EACCESS | flags) == 0 ? 0 : errno;
}

int obstacleBehindLink(const FileDescriptor& folder, const char* name) {
  struct stat status {};
  if (::fstatat(folder.get(), name, &status, 0) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return 0;
  return S_ISREG(status.st_mode) ? obstacleTo(R_OK, folder, name) : EOPNOTSUPP;
}

int obstacleTo(const FileDescriptor& folder, const char* name, Kind kind) {
  switch (kind) {
    case Kind::file:
      return obstacleTo(R_OK, folder, name);
    case Kind::folder:
      return obstacleTo(R_OK | X_OK, folder, name);
    case Kind::link:
      return obstacleBehindLink(folder, name);
    case Kind::other:
      break;
  }
  return EOPNOTSUPP;
}

class Survey final : public TreePass {
 public:
  explicit Survey(const std::function<bool(const Entry&)>& take)
      : TreePass(AfterError::stop), take_(take) {}

  // Examines one entry. Returns 0 or an errno.
  int look(const FileDescriptor& folder, const char* name, const std::string& path,
           FileIdentity& identity, bool& isFolder) {
    struct stat status {};
    if (::fstatat(folder.get(), name, &status, AT_SYMLINK_NOFOLLOW) != 0) return errno;
    identity = identityFrom(status);
    fingerprint_ += fingerprintOf(path, status);
    const Entry entry{.path = path,
                      .kind = identity.kind,
                      .size = identity.size,
                      .obstacle = obstacleTo(folder, name, identity.kind)};
    isFolder = entry.kind == Kind::folder && entry.obstacle == 0;
    return take_(entry) ? 0 : ECANCELED;
  }

  std::uint64_t fingerprint() const { return fingerprint_; }

 private:
  FileDescriptor open(const FileDescriptor& held) override {
    return openFolder(held, ".", O_RDONLY);
  }

  int meet(const FileDescriptor& folder, std::string_view name, unsigned char,
           bool& isFolder) override {
    FileIdentity identity;
    return look(folder, name.data(), pathOfEntry(std::string(name)), identity, isFolder);
  }

  int leave(const FileDescriptor&, const std::string&) override { return 0; }

  const std::function<bool(const Entry&)>& take_;
  std::uint64_t fingerprint_ = 0;  // of all entries together, independent of their order
};

}  // namespace

Result<State> of(const std::string& path, const std::string& name,
                 const std::function<bool(const Entry&)>& take) {
  const Result<NameInFolder> place = NameInFolder::of(path);
  if (!place) return place.error();
  Survey survey(take);
  State state;
  bool isFolder = false;
  const int code =
      survey.look(place.value().folder, place.value().name.c_str(), name, state.item, isFolder);
  if (code != 0) return SystemError::fromErrno(code, name);
  if (isFolder) {
    Outcome outcome = survey.run(place.value().folder, place.value().name, name);
    if (!outcome) return outcome.error();
  }
  state.fingerprint = survey.fingerprint();
  return state;
}

}  // namespace tessaly::TreeSurvey
