// Answers of a reader process that may be controlled by a hostile file.
#include "Target.h"
#include "app/preview/ReaderAnswer.h"

namespace tessaly::fuzz {

namespace {

bool isWithin(std::string_view part, std::string_view whole) {
  return part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size();
}

void requireWithin(std::string_view input, const ReaderAnswer::Bounds& bounds) {
  const auto answer = ReaderAnswer::of(input, bounds);
  if (!answer) return;
  require(answer->pictures.size() <= bounds.pictures, "there are no more pictures than asked for");
  for (const ReaderAnswer::Picture& picture : answer->pictures) {
    require(picture.width > 0 && picture.width <= bounds.width && picture.height > 0 &&
                picture.height <= bounds.height,
            "pictures are within bounds");
    require(picture.pixels.size() == std::size_t{4} * static_cast<std::size_t>(picture.width) *
                                         static_cast<std::size_t>(picture.height),
            "a picture has all its pixels");
    require(isWithin(picture.pixels, input), "pixels are those that were sent");
  }
  for (const auto& [name, value] : answer->facts) {
    require(isWithin(name, input) && isWithin(value, input), "facts are those that were sent");
    require(name.size() + value.size() <= 4096, "facts are short");
  }
  require(answer->facts.size() <= 64, "facts are few");
  require(answer->width >= 0 && answer->height >= 0 && answer->pages >= 0,
          "numbers are not negative");
}

}  // namespace

void tryInput(std::string_view input) {
  requireWithin(input, {});
  requireWithin(input, {.width = 4, .height = 4, .pictures = 2});
  requireWithin(input, {.width = 1600, .height = 6400, .pictures = 20});
}

}  // namespace tessaly::fuzz
