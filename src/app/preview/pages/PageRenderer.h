// Renders the first pages of a document, upright on white. A broken document may keep it busy for
// ever, or exhaust the memory.
#pragma once

#include "app/preview/PreviewLimits.h"
#include "app/preview/pages/AnswerWriter.h"
#include "platform/HeldItem.h"

namespace tessaly::PageRenderer {

// Renders as many pages as the limits allow, with the width in them or, for very tall pages,
// narrower; writes each as soon as it is rendered, and a verdict at the end. The content of `file`
// is open.
void render(const HeldItem& file, AnswerWriter& answer, const PreviewLimits& limits);

}  // namespace tessaly::PageRenderer
