// Renders the first pages of a document, upright on white. A broken document may keep it busy for
// ever, and the library behind it serves one thread of a process at a time: so it has a process of
// its own, which can be ended.
#pragma once

#include <cstdint>

#include <QIODevice>

#include "app/preview/pages/PageSheets.h"

namespace tessaly::PageRenderer {

struct Limits {
  int width = 1600;  // pixels of a page; a very tall one is narrower
  int pages = 20;
  std::int64_t bytes = 128 * 1024 * 1024;  // of all pages; the first one is rendered in any case
};

// Writes sheets to `out` as they are done. Both devices are open.
PageSheets::Outcome render(QIODevice& document, QIODevice& out, const Limits& limits);

}  // namespace tessaly::PageRenderer
