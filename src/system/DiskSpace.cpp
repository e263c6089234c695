#include "system/DiskSpace.h"

#include <algorithm>
#include <vector>

#include "system/DfTable.h"
#include "system/ToolOutput.h"
#include "system/ToolText.h"

namespace tessaly::DiskSpace {

namespace {

constexpr const char* df = "/bin/df";
constexpr const char* osascript = "/usr/bin/osascript";

// a - b; absent when it overflows.
std::optional<std::int64_t> difference(std::int64_t a, std::int64_t b) {
  std::int64_t result = 0;
  if (__builtin_sub_overflow(a, b, &result)) return std::nullopt;
  return result;
}

}  // namespace

std::optional<DiskUsage> volumeUsage() {
  const Result<VolumeCapacity> capacity = volumeCapacity("/");
  if (!capacity) return std::nullopt;
  return volumeUsage(capacity.value());
}

std::optional<DiskUsage> volumeUsage(const VolumeCapacity& capacity) {
  const std::int64_t total = capacity.total.value_or(0);
  if (total < 1) return std::nullopt;

  const std::int64_t available = capacity.available.value_or(0);
  const std::int64_t important = capacity.availableForImportantUsage.value_or(available);
  const std::int64_t opportunistic = capacity.availableForOpportunisticUsage.value_or(available);
  const std::optional<std::int64_t> used = difference(total, important);
  const std::optional<std::int64_t> purgeable =
      capacity.availableForImportantUsage ? difference(important, opportunistic) : 0;
  if (!used || !purgeable) return std::nullopt;

  DiskUsage usage;
  usage.total = total;
  usage.used = std::max<std::int64_t>(*used, 0);
  usage.free = std::max<std::int64_t>(important, 0);
  usage.usedPercent = static_cast<double>(usage.used) / static_cast<double>(total) * 100;
  usage.purgeable = std::max<std::int64_t>(*purgeable, 0);
  return usage;
}

DiskUsage parse(std::string_view text) {
  const std::vector<std::string_view> lines = ToolOutput::lines(text);
  const auto row = std::find_if_not(lines.rbegin(), lines.rend(), DfTable::isHeader);
  if (row == lines.rend()) return {};
  const std::vector<std::string_view> words = ToolOutput::words(*row);
  if (words.size() < 5) return {};

  const std::optional<std::int64_t> total = DfTable::bytes(words[1]);
  const std::optional<std::int64_t> used = DfTable::bytes(words[2]);
  const std::optional<std::int64_t> free = DfTable::bytes(words[3]);
  if (!total || !used || !free) return {};
  return {.total = *total,
          .used = *used,
          .free = *free,
          .usedPercent = DfTable::percent(words[4]),
          .purgeable = 0};
}

DiskUsage usage(const std::optional<std::string>& dfOutput, const Shell::Run& run) {
  return usage(volumeUsage(), dfOutput, run);
}

DiskUsage usage(const std::optional<DiskUsage>& ofVolume,
                const std::optional<std::string>& dfOutput, const Shell::Run& run) {
  if (ofVolume) return *ofVolume;
  return parse(dfOutput ? *dfOutput : toolText(run, df, {"-k", "/"}, 5));
}

std::int64_t trashCount(const Shell::Run& run) {
  const std::string text =
      toolText(run, osascript, {"-e", "tell application \"Finder\" to count items of trash"}, 6);
  return ToolOutput::integer(ToolOutput::trimmed(text)).value_or(0);
}

TrashEmptying emptyTrash(const Shell::Run& run) {
  const std::vector<std::string> script = {"-e", "tell application \"Finder\" to empty trash"};
  constexpr double timeout = 30;
  try {
    run ? run(osascript, script, timeout) : Shell::run(osascript, script, timeout);
  } catch (const ToolError& error) {
    if (error.isTimeOut()) return TrashEmptying::goesOn;
  } catch (...) {
    return TrashEmptying::ended;
  }
  return TrashEmptying::ended;
}

}  // namespace tessaly::DiskSpace
