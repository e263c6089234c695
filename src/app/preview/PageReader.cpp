#include "app/preview/PageReader.h"

#include <cstddef>
#include <optional>
#include <string>

#include "app/preview/PreviewFailures.h"
#include "app/preview/pages/PageSheets.h"
#include "platform/Deadline.h"
#include "platform/MemoryFile.h"
#include "platform/OwnPrograms.h"
#include "platform/Process.h"

namespace tessaly::PageReader {

namespace {

using PageSheets::Outcome;

Result<Process> launched(const HeldItem& file, const MemoryFile& sheets,
                         const PreviewLimits& limits) {
  return Process::launch({
      .path = OwnPrograms::path(PageSheets::program),
      .args = {file.contentPath(), sheets.path(), std::to_string(limits.pixels.width()),
               std::to_string(limits.pages), std::to_string(limits.pageBytes)},
  });
}

// False when the request was cancelled, or the time is over.
bool waitFor(Process& program, const PreviewRequest& request) {
  constexpr double betweenPolls = 0.02;
  const Deadline end = Deadline::after(request.limits.documentSeconds);
  while (!program.waitUntil(Deadline::after(betweenPolls))) {
    if (!request.isCancelled() && !end.hasPassed()) continue;
    program.terminate();
    return false;
  }
  return true;
}

// What is there of them: the program may have been ended while it wrote.
PagesPreview pagesIn(const MemoryFile& sheets, const PreviewLimits& limits) {
  PagesPreview preview;
  PageSheets::Beginning beginning;
  if (!sheets.read(0, &beginning, sizeof beginning)) return preview;
  preview.count = beginning.count;
  std::int64_t offset = sizeof beginning;
  PageSheets::Sheet sheet;
  while (sheets.read(offset, &sheet, sizeof sheet)) {
    if (sheet.width <= 0 || sheet.width > limits.pixels.width() || sheet.height <= 0 ||
        sheet.height > PageSheets::tallest * limits.pixels.width()) {
      break;
    }
    QImage page(sheet.width, sheet.height, QImage::Format_RGB32);
    if (page.isNull()) break;
    offset += sizeof sheet;
    if (!sheets.read(offset, page.bits(), static_cast<std::size_t>(page.sizeInBytes()))) break;
    offset += page.sizeInBytes();
    preview.pages.push_back(std::move(page));
  }
  return preview;
}

PreviewFailure failureOf(const std::optional<Process::Exit>& exit) {
  if (exit && exit->status == Outcome::locked) return PreviewFailures::lockedDocument();
  if (exit && exit->status == Outcome::encrypted) return PreviewFailures::foreignDocument();
  return PreviewFailures::damagedDocument();
}

}  // namespace

PreviewBody read(const HeldItem& file, const PreviewRequest& request) {
  const PreviewLimits& limits = request.limits;
  if (file.facts().size > limits.documentBytes) return PreviewFailures::hugeDocument();
  const Result<MemoryFile> sheets = MemoryFile::made();
  if (!sheets) return PreviewFailures::of(sheets.error(), false);
  if (request.isCancelled()) return FactsOnly{};
  Result<Process> program = launched(file, sheets.value(), limits);
  if (!program) return PreviewFailures::unshownDocument();

  const bool isOver = waitFor(program.value(), request);
  if (request.isCancelled()) return FactsOnly{};
  const std::optional<Process::Exit> exit =
      isOver ? program.value().exit() : std::optional<Process::Exit>();
  if (exit && exit->status == Outcome::failed) return PreviewFailures::unshownDocument();
  PagesPreview preview = pagesIn(sheets.value(), limits);
  if (preview.pages.empty()) return failureOf(exit);
  return preview;
}

}  // namespace tessaly::PageReader
