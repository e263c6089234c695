#include "reclaim/ZipListing.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "platform/HeldItem.h"

namespace tessaly {

namespace {

constexpr std::uint64_t mostListed = std::uint64_t{1} << 30U;  // bytes
constexpr std::size_t endLength = 22;
constexpr std::size_t mostComment = 65535;
constexpr std::size_t locatorLength = 20;
constexpr std::size_t wideEndLength = 56;
constexpr std::size_t entryLength = 46;  // without its name
constexpr std::uint64_t standsElsewhere = 0xffffffff;

// The `length` bytes at `at` as a little-endian number.
std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t length) {
  std::uint64_t value = 0;
  for (std::size_t k = length; k-- > 0;) {
    value = value << 8U | static_cast<unsigned char>(bytes[at + k]);
  }
  return value;
}

// Position of the list in the archive.
struct ListRange {
  std::uint64_t offset = 0;
  std::uint64_t length = 0;
  std::uint64_t entries = 0;
};

std::optional<std::string> bytesAt(std::uint64_t offset, std::uint64_t count,
                                   const ZipListing::ReadAt& read) {
  std::string bytes(static_cast<std::size_t>(count), '\0');
  if (!read(static_cast<std::int64_t>(offset), bytes.data(), bytes.size())) return std::nullopt;
  return bytes;
}

// For an archive too large for the fields of its end record, which is at `end`.
std::optional<ListRange> wideRange(std::uint64_t end, const ZipListing::ReadAt& read) {
  if (end < locatorLength) return std::nullopt;
  const auto locator = bytesAt(end - locatorLength, locatorLength, read);
  if (!locator || !locator->starts_with("PK\6\7")) return std::nullopt;
  const std::uint64_t offset = number(*locator, 8, 8);
  if (offset > end || end - offset < wideEndLength) return std::nullopt;
  const auto wide = bytesAt(offset, wideEndLength, read);
  if (!wide || !wide->starts_with("PK\6\6")) return std::nullopt;
  return ListRange{.offset = number(*wide, 48, 8),
                   .length = number(*wide, 40, 8),
                   .entries = number(*wide, 32, 8)};
}

std::optional<ListRange> rangeOfList(std::uint64_t size, const ZipListing::ReadAt& read) {
  const std::uint64_t length = std::min<std::uint64_t>(size, endLength + mostComment);
  const auto tail = bytesAt(size - length, length, read);
  if (!tail || tail->size() < endLength) return std::nullopt;
  std::size_t at = tail->size() - endLength + 1;
  do {
    if (at == 0) return std::nullopt;
    at = tail->rfind("PK\5\6", at - 1);
    if (at == std::string::npos) return std::nullopt;
  } while (at + endLength + number(*tail, at + 20, 2) != tail->size());

  const std::uint64_t end = size - length + at;
  std::optional<ListRange> range = ListRange{.offset = number(*tail, at + 16, 4),
                                             .length = number(*tail, at + 12, 4),
                                             .entries = number(*tail, at + 10, 2)};
  if (range->offset == standsElsewhere || range->length == standsElsewhere ||
      range->entries == 0xffff) {
    // An archive may have exactly 65535 entries without a wide record.
    if (const auto wide = wideRange(end, read)) range = wide;
  }
  if (range->length > mostListed || range->offset > end || range->length > end - range->offset) {
    return std::nullopt;
  }
  return range;
}

// The size of a file that is too large for the field of its entry.
std::optional<std::uint64_t> wideSize(std::string_view extra) {
  constexpr std::size_t head = 4;
  while (extra.size() >= head) {
    const std::uint64_t kind = number(extra, 0, 2);
    const auto length = static_cast<std::size_t>(number(extra, 2, 2));
    extra.remove_prefix(head);
    if (length > extra.size()) break;
    if (kind == 1 && length >= 8) return number(extra, 0, 8);
    extra.remove_prefix(length);
  }
  return std::nullopt;
}

}  // namespace

std::optional<ZipListing> ZipListing::of(std::int64_t size, const ReadAt& read) {
  if (size < 0) return std::nullopt;
  const auto range = rangeOfList(static_cast<std::uint64_t>(size), read);
  if (!range) return std::nullopt;
  const auto list = bytesAt(range->offset, range->length, read);
  if (!list) return std::nullopt;

  ZipListing listing;
  std::string_view rest = *list;
  std::uint64_t entries = 0;
  for (; !rest.empty(); ++entries) {
    if (rest.size() < entryLength || !rest.starts_with("PK\1\2")) return std::nullopt;
    const auto name = static_cast<std::size_t>(number(rest, 28, 2));
    const auto extra = static_cast<std::size_t>(number(rest, 30, 2));
    const auto comment = static_cast<std::size_t>(number(rest, 32, 2));
    if (rest.size() - entryLength < name + extra + comment) return std::nullopt;
    std::optional<std::uint64_t> bytes = number(rest, 24, 4);
    if (*bytes == standsElsewhere) bytes = wideSize(rest.substr(entryLength + name, extra));
    if (!bytes || *bytes > std::numeric_limits<std::int64_t>::max()) return std::nullopt;
    listing.sizes_[std::string(rest.substr(entryLength, name))] = static_cast<std::int64_t>(*bytes);
    rest.remove_prefix(entryLength + name + extra + comment);
  }
  if (entries != range->entries) return std::nullopt;
  return listing;
}

std::optional<ZipListing> ZipListing::at(const std::string& path) {
  Result<HeldItem> file = HeldItem::at(path);
  if (!file || !file.value().openContent()) return std::nullopt;
  const HeldItem& held = file.value();
  return of(held.facts().size, [&](std::int64_t offset, char* to, std::size_t count) {
    while (count > 0) {
      const Result<std::size_t> read = held.read(offset, to, count);
      if (!read || read.value() == 0) return false;
      to += read.value();
      offset += static_cast<std::int64_t>(read.value());
      count -= read.value();
    }
    return true;
  });
}

std::optional<std::int64_t> ZipListing::sizeOf(const std::string& name) const {
  const auto found = sizes_.find(name);
  return found == sizes_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace tessaly
