#include "app/preview/ReaderRequest.h"

#include <cstring>
#include <type_traits>

namespace tessaly {

namespace {

struct Head {
  std::uint32_t length = 0;  // of the whole request, in bytes
  ReaderRequest::Wanted wanted = ReaderRequest::Wanted::image;
  std::uint32_t format = 0;  // number of bytes that follow
  std::uint32_t path = 0;    // number of bytes that follow these
  HeldItem::Identity identity;
  PreviewLimits limits;
};
static_assert(std::is_trivially_copyable_v<Head>);

std::optional<Head> headOf(std::string_view bytes) {
  if (bytes.size() < sizeof(Head)) return std::nullopt;
  Head head;
  std::memcpy(&head, bytes.data(), sizeof head);
  return head;
}

}  // namespace

std::optional<std::string> ReaderRequest::encoded() const {
  if (format.size() > mostBytes || path.size() > mostBytes) return std::nullopt;
  const std::size_t length = sizeof(Head) + format.size() + path.size();
  if (length > mostBytes) return std::nullopt;
  const Head head{.length = static_cast<std::uint32_t>(length),
                  .wanted = wanted,
                  .format = static_cast<std::uint32_t>(format.size()),
                  .path = static_cast<std::uint32_t>(path.size()),
                  .identity = identity,
                  .limits = limits};
  std::string bytes(sizeof head, '\0');
  std::memcpy(bytes.data(), &head, sizeof head);
  return bytes + format + path;
}

std::optional<std::size_t> ReaderRequest::lengthOf(std::string_view beginning) {
  const std::optional<Head> head = headOf(beginning);
  if (!head) return std::nullopt;
  return head->length >= sizeof(Head) && head->length <= mostBytes ? head->length : 0;
}

std::optional<ReaderRequest> ReaderRequest::decoded(std::string_view bytes) {
  const std::optional<Head> head = headOf(bytes);
  if (!head || head->length != bytes.size() || head->wanted > Wanted::mediaIfOne ||
      std::uint64_t{head->format} + head->path != bytes.size() - sizeof(Head)) {
    return std::nullopt;
  }
  return ReaderRequest{.wanted = head->wanted,
                       .format = std::string(bytes.substr(sizeof(Head), head->format)),
                       .path = std::string(bytes.substr(sizeof(Head) + head->format)),
                       .identity = head->identity,
                       .limits = head->limits};
}

}  // namespace tessaly
