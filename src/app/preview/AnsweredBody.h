// Turns an answer of the program that reads foreign formats into the body of a preview. Pure, safe
// from any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "app/preview/PreviewRequest.h"
#include "app/preview/ReaderRequest.h"

namespace tessaly::AnsweredBody {

// How the process ended.
enum class End : std::uint8_t {
  itself,    // by itself, regularly or by a crash
  lack,      // by the system, for lack of memory or CPU time
  late,      // killed when its time was over
  overlong,  // killed because its answer exceeded the limit
};

// Absent if the file does not have the format that was only assumed. `answer` is everything that
// the process wrote.
std::optional<PreviewBody> of(const std::string& answer, End end, ReaderRequest::Wanted wanted,
                              const PreviewLimits& limits);

// The same if the program could not be started.
std::optional<PreviewBody> ofNone(ReaderRequest::Wanted wanted);

// The greatest size of an answer to a request with these limits, in bytes.
std::size_t mostBytes(const PreviewLimits& limits);

}  // namespace tessaly::AnsweredBody
