#include "platform/SystemError.h"

#include <cerrno>
#include <system_error>

namespace tessaly {

namespace {

SystemError::Kind kindOf(int code) {
  using Kind = SystemError::Kind;
  switch (code) {
    case ENOENT:
    case ESRCH:
      return Kind::notFound;
    case EEXIST:
    case ENOTEMPTY:
      return Kind::alreadyExists;
    case EACCES:
    case EPERM:
      return Kind::notPermitted;
    case EROFS:
      return Kind::readOnly;
    case ENOSPC:
    case EDQUOT:
      return Kind::noSpace;
    case EXDEV:
      return Kind::crossesDevices;
    case ENAMETOOLONG:
      return Kind::nameTooLong;
    case ENOTDIR:
      return Kind::notADirectory;
    case EISDIR:
      return Kind::isADirectory;
    case EMFILE:
    case ENFILE:
      return Kind::tooManyOpenFiles;
    case ESTALE:
      return Kind::stale;
    case ELOOP:
      return Kind::linkOnTheWay;
    case ENOSYS:
    case EOPNOTSUPP:
      return Kind::notSupported;
    default:
      return Kind::other;
  }
}

}  // namespace

SystemError SystemError::fromErrno(int code, std::string_view path) {
  return SystemError{.kind = kindOf(code), .path = std::string(path), .code = code};
}

std::string SystemError::description() const {
  return path + ": " + std::generic_category().message(code);
}

}  // namespace tessaly
