// What a preview shows of what the program that reads foreign formats has answered. Pure, safe from
// any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "app/preview/PreviewRequest.h"
#include "app/preview/ReaderRequest.h"

namespace tessaly::AnsweredBody {

// How it came to an end.
enum class End : std::uint8_t {
  itself,    // by itself, whether well or in a crash
  lack,      // for lack of memory or of time, as the system has it
  late,      // it was ended when its time was over
  overlong,  // it was ended because it answered without end
};

// None where the file is not what it was to be, if it was that. `answer` is all it has written.
std::optional<PreviewBody> of(const std::string& answer, End end, ReaderRequest::Wanted wanted,
                              const PreviewLimits& limits);

// The same where the program could not be started.
std::optional<PreviewBody> ofNone(ReaderRequest::Wanted wanted);

// An answer of this request has no more bytes.
std::size_t mostBytes(const PreviewLimits& limits);

}  // namespace tessaly::AnsweredBody
