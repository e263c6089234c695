// The first pages of a PDF document, rendered by a program of ours beside this one. A document that
// brings it down, or keeps it busy for too long, is damaged as far as this process is concerned;
// several documents are rendered at once.
//
// On the calling thread, which should be a worker.
#pragma once

#include "app/preview/PreviewRequest.h"
#include "platform/HeldItem.h"

namespace tessaly::PageReader {

// As many pages from the first as the limits allow, upright on white, as wide as the limits say or,
// where they are very tall, narrower. When the time is over, the pages that are done by then.
// `file` has its content open.
PreviewBody read(const HeldItem& file, const PreviewRequest& request);

}  // namespace tessaly::PageReader
