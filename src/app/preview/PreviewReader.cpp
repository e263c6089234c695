#include "app/preview/PreviewReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "app/preview/ContentKind.h"
#include "app/preview/FolderReader.h"
#include "app/preview/PreviewFailures.h"
#include "app/preview/TextReader.h"
#include "platform/HeldItem.h"
#include "platform/UnicodeText.h"
#include "scan/PathName.h"

namespace tessaly::PreviewReader {

namespace {

using Family = ContentKind::Family;
using Wanted = ReaderRequest::Wanted;

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

// These formats have no distinct signature, so the name decides too.
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

PreviewBody unsignedFile(const HeldItem& file, std::string_view name, const PreviewRequest& request,
                         ReaderProgram& reader) {
  std::string lowercased;
  const std::string_view format = imageByName(name, lowercased);
  if (!format.empty()) {
    std::optional<PreviewBody> image = reader.read(file, Wanted::imageIfOne, format, request);
    if (image) return *std::move(image);
  }
  if (std::optional<PreviewBody> text = TextReader::read(file, request)) return *std::move(text);
  return reader.read(file, Wanted::mediaIfOne, {}, request).value_or(FactsOnly{});
}

PreviewBody fileBody(HeldItem& file, std::string_view name, const PreviewRequest& request,
                     ReaderProgram& reader) {
  if (const Outcome opened = file.openContent(); !opened) {
    return PreviewFailures::of(opened.error(), false);
  }
  std::string head(ContentKind::headBytes, '\0');
  const Result<std::size_t> length = file.read(0, head.data(), head.size());
  if (!length) return PreviewFailures::of(length.error(), false);
  head.resize(length.value());
  const ContentKind kind = ContentKind::of(head);
  const auto readAs = [&](Wanted wanted) {
    return reader.read(file, wanted, kind.image, request).value_or(FactsOnly{});
  };
  switch (kind.family) {
    case Family::image:
      return readAs(Wanted::image);
    case Family::document:
      return readAs(Wanted::document);
    case Family::media:
      return readAs(Wanted::media);
    case Family::closed:
      return FactsOnly{};
    case Family::unknown:
      break;
  }
  return unsignedFile(file, name, request, reader);
}

PreviewBody bodyOf(HeldItem& item, std::string_view name, const PreviewRequest& request,
                   ReaderProgram& reader) {
  if (request.isCancelled()) return FactsOnly{};
  switch (item.facts().type) {
    case HeldItem::Type::file:
      return fileBody(item, name, request, reader);
    case HeldItem::Type::folder:
      return FolderReader::read(item, request);
    case HeldItem::Type::other:
      break;
  }
  return FactsOnly{};
}

}  // namespace

PreviewContent read(const std::string& path, const PreviewRequest& request, ReaderProgram& reader) {
  PreviewContent content;
  Result<HeldItem> item = HeldItem::at(path);
  if (item) {
    content.facts = factsOf(item.value());
  } else {
    content.body = PreviewFailures::of(item.error(), false);
  }
  content.facts.path = path;
  content.facts.name = lastPathComponent(path);
  if (item) content.body = bodyOf(item.value(), content.facts.name, request, reader);
  return content;
}

}  // namespace tessaly::PreviewReader
