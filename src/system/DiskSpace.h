// Usage of the start-up volume, and the number of items in the Trash.
//
// No function fails: if a tool cannot be run or its output is not understood, the result is the
// value for "unknown". Functions with a `run` start a tool with it, or with Shell::run when it is
// empty, and may block until that returns. Safe from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/VolumeCapacity.h"
#include "system/DiskUsage.h"
#include "system/Shell.h"

namespace tessaly::DiskSpace {

// Usage of the volume of "/", from the file system. Absent when it is unknown.
std::optional<DiskUsage> volumeUsage();

// The rule behind it. Free space is the space for something that the user asked for, including
// purgeable space, if the system reports it. Absent without a size, and when a difference of the
// figures overflows.
std::optional<DiskUsage> volumeUsage(const VolumeCapacity& capacity);

// Parses the output of "df -k /": the last line that is not a header. All zero unless each of its
// three sizes can be read.
DiskUsage parse(std::string_view text);

// volumeUsage() if present, else `dfOutput` parsed, else the current output of df parsed.
DiskUsage usage(const std::optional<std::string>& dfOutput = std::nullopt,
                const Shell::Run& run = {});

// The same with the result of volumeUsage() passed in.
DiskUsage usage(const std::optional<DiskUsage>& ofVolume,
                const std::optional<std::string>& dfOutput, const Shell::Run& run);

// Number of items in the Trash; 0 when they cannot be counted.
std::int64_t trashCount(const Shell::Run& run = {});

// State of a request to empty the Trash when this program stops waiting for it.
enum class TrashEmptying {
  ended,   // the tool has exited, also if it could not delete everything or did not start
  goesOn,  // the tool still runs, and will finish without this program
};

// Asks the tool to empty the Trash, and waits for it for a limited time.
TrashEmptying emptyTrash(const Shell::Run& run = {});

}  // namespace tessaly::DiskSpace
