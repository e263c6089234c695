#include "app/preview/PreviewFailures.h"

namespace tessaly::PreviewFailures {

PreviewFailure of(const SystemError& error, bool isFolder) {
  const QString item = isFolder ? QStringLiteral("folder") : QStringLiteral("file");
  switch (error.kind) {
    case SystemError::Kind::notFound:
    case SystemError::Kind::notADirectory:
      return {QStringLiteral("This %1 is no longer there.").arg(item)};
    case SystemError::Kind::notPermitted:
      return {QStringLiteral("You do not have permission to read this %1.").arg(item)};
    case SystemError::Kind::tooManyOpenFiles:
      return {QStringLiteral("This %1 cannot be read while so many files are open.").arg(item)};
    default:
      return {QStringLiteral("This %1 cannot be read.").arg(item)};
  }
}

PreviewFailure damagedImage() {
  return {QStringLiteral("This image is damaged and cannot be shown.")};
}

PreviewFailure hugeImage() {
  return {QStringLiteral("This image is too large to be shown.")};
}

PreviewFailure unshownImage() {
  return {QStringLiteral("This image cannot be shown.")};
}

PreviewFailure damagedDocument() {
  return {QStringLiteral("This document is damaged and cannot be shown.")};
}

PreviewFailure hugeDocument() {
  return {QStringLiteral("This document is too large to be shown.")};
}

PreviewFailure unshownDocument() {
  return {QStringLiteral("This document cannot be shown.")};
}

PreviewFailure lockedDocument() {
  return {QStringLiteral("This document cannot be shown because it needs a password.")};
}

PreviewFailure foreignDocument() {
  return {QStringLiteral("This document is encrypted in a way that cannot be read here.")};
}

PreviewFailure damagedMedia() {
  return {QStringLiteral("This recording is damaged and cannot be read.")};
}

PreviewFailure unreadMedia() {
  return {QStringLiteral("This recording cannot be read.")};
}

}  // namespace tessaly::PreviewFailures
