// Renders the pages of one document for a preview: see PageSheets.h.
#include <cstdio>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>

#include "app/preview/pages/PageRenderer.h"

int main(int count, char** arguments) {
  using namespace tessaly;
  // Whoever waits for it ends it sooner; this is for when nobody waits any more.
  constexpr unsigned longest = 120;
  ::alarm(longest);
  // It may be brought down by what it reads, and says how it ended by what it returns alone.
  const rlimit none = {};
  ::setrlimit(RLIMIT_CORE, &none);
  [[maybe_unused]] const std::FILE* lost = std::freopen("/dev/null", "w", stderr);
  if (count != 6) return PageSheets::failed;
  const QCoreApplication application(count, arguments);
  const QByteArray width = arguments[3];
  const QByteArray pages = arguments[4];
  const QByteArray bytes = arguments[5];
  QFile document(QString::fromLatin1(arguments[1]));
  QFile out(QString::fromLatin1(arguments[2]));
  if (!document.open(QIODevice::ReadOnly) ||
      !out.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
    return PageSheets::failed;
  }
  const PageSheets::Outcome outcome = PageRenderer::render(
      document, out, {.width = width.toInt(), .pages = pages.toInt(), .bytes = bytes.toLongLong()});
  // All is written, and what the library has left lying about goes with the process.
  ::_exit(outcome);
}
