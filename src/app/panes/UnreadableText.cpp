#include "app/panes/UnreadableText.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <vector>

#include <QTextBoundaryFinder>

#include "app/model/DisplayText.h"

namespace tessaly::UnreadableText {

namespace {

constexpr std::size_t mostLines = 20;
// The kept characters of a path, before and after the elided part.
constexpr qsizetype mostBefore = 24;
constexpr qsizetype mostAfter = 48;

QString cutInTheMiddle(const QString& text) {
  // Where the user-perceived characters (grapheme clusters) begin.
  std::vector<qsizetype> starts;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
  for (qsizetype at = 0; at >= 0 && at < text.size(); at = finder.toNextBoundary()) {
    starts.push_back(at);
  }
  const auto count = static_cast<qsizetype>(starts.size());
  if (count <= mostBefore + 1 + mostAfter) return text;
  return text.left(starts[mostBefore]) + QChar(0x2026) +
         text.mid(starts[static_cast<std::size_t>(count - mostAfter)]);
}

}  // namespace

QString figure(const UnreadableItems& items) {
  if (items.count == 0) return {};
  return QStringLiteral("· %1 unreadable").arg(QString::number(items.count));
}

QString list(const UnreadableItems& items) {
  QString text;
  const std::size_t lines = std::min(items.first.size(), mostLines);
  for (std::size_t i = 0; i < lines; ++i) {
    const SystemError& failure = items.first[i];
    if (i > 0) text += QLatin1Char('\n');
    text += cutInTheMiddle(displayText(failure.path)) + QStringLiteral(": ") + reason(failure);
  }
  if (items.count > lines) {
    text += QStringLiteral("\nand %1 more").arg(QString::number(items.count - lines));
  }
  return text;
}

QString reason(const SystemError& failure) {
  using Kind = SystemError::Kind;
  switch (failure.kind) {
    case Kind::notPermitted:
      return QStringLiteral("not permitted");
    case Kind::tooManyOpenFiles:
      return QStringLiteral("too many files are open");
    case Kind::notFound:
      return QStringLiteral("not there any more");
    case Kind::nameTooLong:
      return QStringLiteral("the path is too long");
    case Kind::notSupported:
      return QStringLiteral("the file system cannot do it");
    default:
      break;
  }
  switch (failure.code) {
    case EIO:
      return QStringLiteral("the disk cannot be read there");
    case ENOMEM:
      return QStringLiteral("not enough memory");
    case ESTALE:
    case ENOTCONN:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ETIMEDOUT:
      return QStringLiteral("the volume does not answer");
    default:
      return QString::fromStdString(std::generic_category().message(failure.code));
  }
}

}  // namespace tessaly::UnreadableText
