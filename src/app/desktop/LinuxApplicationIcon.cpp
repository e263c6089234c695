#include "app/desktop/LinuxApplicationIcon.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include <QVariantMap>

namespace tessaly {

namespace {

// The value of a text that is an integer, with or without a percent sign.
std::optional<std::int64_t> countIn(std::string_view text) {
  if (text.ends_with('%')) text.remove_suffix(1);
  std::int64_t count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return count;
}

}  // namespace

LinuxApplicationIcon::Services LinuxApplicationIcon::Services::real() {
  constexpr int untilActive = 0;
  return {SessionBus::connectToReal, [](QWindow& window) { window.alert(untilActive); }};
}

LinuxApplicationIcon::LinuxApplicationIcon(Dispatch& dispatch, Services services)
    : alert_(std::move(services.alert)), bus_(dispatch, std::move(services.connect)) {}

// A dock that starts later has missed earlier badges, so every badge is sent, even if it is the
// same.
void LinuxApplicationIcon::setBadge(const std::string& text) {
  const std::optional<std::int64_t> count = countIn(text);
  const QVariantMap properties = {
      {QStringLiteral("count"), QVariant::fromValue<qlonglong>(count.value_or(0))},
      {QStringLiteral("count-visible"), count.has_value()},
      // The number is a share of the disk, not a progress.
      {QStringLiteral("progress"), 0.0},
      {QStringLiteral("progress-visible"), false}};
  QDBusMessage update = QDBusMessage::createSignal(
      QStringLiteral("/com/canonical/unity/launcherentry/tessaly"),
      QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
  update << QStringLiteral("application://tessaly.desktop") << properties;
  bus_.emitSignal(update);
}

void LinuxApplicationIcon::requestAttention() {
  if (window_ != nullptr && !window_->isActive()) alert_(*window_);
}

}  // namespace tessaly
