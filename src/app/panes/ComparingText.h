// How far a comparison of files for duplicates is, as text. Pure function.
#pragma once

#include <QString>

#include "reclaim/DuplicateProgress.h"

namespace tessaly::ComparingText {

// "Comparing 12 of 40 files · 1.2 of 8 GB": both sizes in the unit of the whole, in which a whole
// number has no decimal.
QString of(const DuplicateProgress& progress);

}  // namespace tessaly::ComparingText
