// The result of a decoder: something to show, or a verdict why there is nothing.
#pragma once

#include <variant>

#include "app/preview/PreviewContent.h"
#include "app/preview/ReaderAnswer.h"

namespace tessaly {

using Decoded = std::variant<ReaderAnswer::Verdict, ImagePreview, MediaPreview>;

}  // namespace tessaly
