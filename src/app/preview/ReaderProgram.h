// Runs the program that reads foreign formats: images, documents, sound and film. Harmful files
// cannot affect this process: the other one has limits, and is killed when its time is over or its
// answer is no longer needed.
//
// Each file is read by a process of its own. One process is started ahead for the next file, so
// that no file waits for a start. Safe from any thread; several files can be read at once.
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "app/preview/PreviewRequest.h"
#include "app/preview/ReaderRequest.h"
#include "platform/HeldItem.h"
#include "platform/OwnPrograms.h"
#include "platform/Process.h"

namespace tessaly {

class ReaderProgram {
 public:
  explicit ReaderProgram(std::string path = OwnPrograms::path(ReaderRequest::program));
  // Kills the waiting process.
  ~ReaderProgram();
  ReaderProgram(const ReaderProgram&) = delete;
  ReaderProgram& operator=(const ReaderProgram&) = delete;

  // Starts the process for the next file, unless there is one. Does not wait until it is ready.
  void warmUp();

  // Blocks until the file is read, the request is cancelled or its time is over; in any case the
  // process has ended or been killed by then. `format` is that of an image, by its Qt name. Absent
  // if the file does not have the format that was only assumed.
  std::optional<PreviewBody> read(const HeldItem& file, ReaderRequest::Wanted wanted,
                                  std::string_view format, const PreviewRequest& request);

 private:
  std::optional<Process> launched() const;
  std::optional<Process> takeWaiting();
  // A process that has received the request.
  std::optional<Process> asked(const std::string& question);

  const std::string path_;
  std::mutex mutex_;
  std::optional<Process> waiting_;
};

}  // namespace tessaly
