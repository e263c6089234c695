// How full the start-up volume is, and how many items lie in the Trash.
//
// Nothing here fails: a tool that cannot be run or prints what nobody understands leaves the value
// that says nothing is known. Functions that take a `run` start a tool with it, or with Shell::run
// when it is empty, and may block until that gives up. Safe from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/VolumeCapacity.h"
#include "system/DiskUsage.h"
#include "system/Shell.h"

namespace tessaly::DiskSpace {

// Of the volume that holds "/", as the file system tells it. Absent when it does not.
std::optional<DiskUsage> volumeUsage();

// The rule behind it. Free is what is left for something the user asked for, purged space
// included, where the system tells that. Absent without a size, and when a difference of the
// figures does not fit.
std::optional<DiskUsage> volumeUsage(const VolumeCapacity& capacity);

// From what "df -k /" prints: the last line that is no header. All zero unless each of its
// three sizes can be read.
DiskUsage parse(std::string_view text);

// What volumeUsage() gives, else what is parsed from `dfOutput`, else from what df prints now.
DiskUsage usage(const std::optional<std::string>& dfOutput = std::nullopt,
                const Shell::Run& run = {});

// The same with the answer of volumeUsage() given.
DiskUsage usage(const std::optional<DiskUsage>& ofVolume,
                const std::optional<std::string>& dfOutput, const Shell::Run& run);

// Items in the Trash; 0 when they cannot be counted.
std::int64_t trashCount(const Shell::Run& run = {});

// What became of a request by the time that this program waits for it no longer.
enum class TrashEmptying {
  ended,   // by itself, also where not all could be deleted, or the tool did not start
  goesOn,  // without us: who empties the Trash finishes what it was asked for
};

// Empties the Trash, if it can.
TrashEmptying emptyTrash(const Shell::Run& run = {});

}  // namespace tessaly::DiskSpace
