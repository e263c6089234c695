#include "Target.h"
#include "app/preview/ContentKind.h"

namespace tessaly::fuzz {

void tryInput(std::string_view input) {
  const ContentKind kind = ContentKind::of(input);
  require((kind.family == ContentKind::Family::image) == !kind.image.empty(),
          "images alone have a format");
  require(ContentKind::of(input) == kind, "the same bytes are the same");
}

}  // namespace tessaly::fuzz
