// Renders the first pages of a document, upright on white. A broken document may keep it busy for
// ever, or take all memory that there is.
#pragma once

#include "app/preview/PreviewLimits.h"
#include "app/preview/pages/AnswerWriter.h"
#include "platform/HeldItem.h"

namespace tessaly::PageRenderer {

// As many pages from the first as the limits allow, as wide as they say or, where they are very
// tall, narrower; written as they are done, and a verdict after them. `file` has its content open.
void render(const HeldItem& file, AnswerWriter& answer, const PreviewLimits& limits);

}  // namespace tessaly::PageRenderer
