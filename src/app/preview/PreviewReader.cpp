#include "app/preview/PreviewReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "app/preview/ContentKind.h"
#include "app/preview/FolderReader.h"
#include "app/preview/ImageReader.h"
#include "app/preview/MediaReader.h"
#include "app/preview/PageReader.h"
#include "app/preview/PreviewFailures.h"
#include "app/preview/TextReader.h"
#include "platform/HeldItem.h"
#include "platform/UnicodeText.h"
#include "scan/PathName.h"

namespace tessaly::PreviewReader {

namespace {

using Family = ContentKind::Family;

PreviewFacts factsOf(const HeldItem& item) {
  const HeldItem::Facts& known = item.facts();
  PreviewFacts facts;
  facts.isDir = known.type == HeldItem::Type::folder;
  facts.size = facts.isDir ? 0 : known.size;
  facts.created = known.created;
  facts.modified = known.modified;
  facts.linkTarget = known.linkTarget;
  return facts;
}

// These formats have no signature that tells them from anything else, so the name is asked too.
std::string_view imageByName(std::string_view name, std::string& lowercased) {
  constexpr std::array<std::string_view, 3> formats = {"tga", "wbmp", "xbm"};
  lowercased = UnicodeText::lowercased(name);
  for (const std::string_view format : formats) {
    if (lowercased.ends_with(format) && lowercased.size() > format.size() &&
        lowercased[lowercased.size() - format.size() - 1] == '.') {
      return format;
    }
  }
  return {};
}

PreviewBody unsignedFile(const HeldItem& file, std::string_view name,
                         const PreviewRequest& request) {
  std::string lowercased;
  const std::string_view format = imageByName(name, lowercased);
  if (!format.empty() && ImageReader::canRead(file, format, request)) {
    return ImageReader::read(file, format, request);
  }
  if (std::optional<PreviewBody> text = TextReader::read(file, request)) return *std::move(text);
  if (std::optional<PreviewBody> media = MediaReader::readUnsigned(file, request)) {
    return *std::move(media);
  }
  return FactsOnly{};
}

PreviewBody fileBody(HeldItem& file, std::string_view name, const PreviewRequest& request) {
  if (const Outcome opened = file.openContent(); !opened) {
    return PreviewFailures::of(opened.error(), false);
  }
  std::string head(ContentKind::headBytes, '\0');
  const Result<std::size_t> length = file.read(0, head.data(), head.size());
  if (!length) return PreviewFailures::of(length.error(), false);
  head.resize(length.value());
  const ContentKind kind = ContentKind::of(head);
  switch (kind.family) {
    case Family::image:
      return ImageReader::read(file, kind.image, request);
    case Family::document:
      return PageReader::read(file, request);
    case Family::media:
      return MediaReader::read(file, request);
    case Family::closed:
      return FactsOnly{};
    case Family::unknown:
      break;
  }
  return unsignedFile(file, name, request);
}

PreviewBody bodyOf(HeldItem& item, std::string_view name, const PreviewRequest& request) {
  if (request.isCancelled()) return FactsOnly{};
  switch (item.facts().type) {
    case HeldItem::Type::file:
      return fileBody(item, name, request);
    case HeldItem::Type::folder:
      return FolderReader::read(item, request);
    case HeldItem::Type::other:
      break;
  }
  return FactsOnly{};
}

}  // namespace

PreviewContent read(const std::string& path, const PreviewRequest& request) {
  PreviewContent content;
  Result<HeldItem> item = HeldItem::at(path);
  if (item) {
    content.facts = factsOf(item.value());
  } else {
    content.body = PreviewFailures::of(item.error(), false);
  }
  content.facts.path = path;
  content.facts.name = lastPathComponent(path);
  if (item) content.body = bodyOf(item.value(), content.facts.name, request);
  return content;
}

}  // namespace tessaly::PreviewReader
