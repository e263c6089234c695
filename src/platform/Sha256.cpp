#include "platform/Sha256.h"

#include <algorithm>
#include <array>
#include <openssl/evp.h>

namespace tessaly {

namespace {

struct Release {
  void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

// Small enough to stay in the processor's nearest caches.
constexpr std::array<char, 16384> zeros{};

}  // namespace

struct Sha256::State {
  std::unique_ptr<EVP_MD_CTX, Release> context{EVP_MD_CTX_new()};
  bool isGood = context && EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) == 1;
};

Sha256::Sha256() : state_(std::make_unique<State>()) {}
Sha256::Sha256(Sha256&&) noexcept = default;
Sha256& Sha256::operator=(Sha256&&) noexcept = default;
Sha256::~Sha256() = default;

void Sha256::add(std::span<const char> bytes) {
  if (!state_->isGood) return;
  state_->isGood = EVP_DigestUpdate(state_->context.get(), bytes.data(), bytes.size()) == 1;
}

void Sha256::addZeros(std::size_t count) {
  while (count > 0) {
    const std::size_t part = std::min(count, zeros.size());
    add({zeros.data(), part});
    count -= part;
  }
}

std::optional<std::string> Sha256::finish() {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned length = 0;
  if (!state_->isGood || EVP_DigestFinal_ex(state_->context.get(), digest.data(), &length) != 1)
    return std::nullopt;
  constexpr std::array<char, 17> digits{"0123456789abcdef"};
  std::string text;
  text.reserve(std::size_t{2} * length);
  for (unsigned i = 0; i < length; ++i) {
    text += digits[digest[i] >> 4U];
    text += digits[digest[i] & 15U];
  }
  return text;
}

}  // namespace tessaly
