// The facts of a file as rows of a preview. Pure, safe from any thread.
#pragma once

#include <vector>

#include <QTimeZone>

#include "app/preview/PreviewContent.h"
#include "app/quicklook/PreviewRow.h"

namespace tessaly {

// Times are shown in `zone`. Facts that are absent or do not apply have no row.
std::vector<PreviewRow> factRows(const PreviewFacts& facts, const QTimeZone& zone);

}  // namespace tessaly
