// The facts of a file as a preview lists them. Pure, safe from any thread.
#pragma once

#include <vector>

#include <QTimeZone>

#include "app/preview/PreviewContent.h"
#include "app/quicklook/PreviewRow.h"

namespace tessaly {

// Times are given in `zone`. What is absent or without meaning for a file has no row.
std::vector<PreviewRow> factRows(const PreviewFacts& facts, const QTimeZone& zone);

}  // namespace tessaly
