// The program beside this one that reads foreign formats: images, documents, sound and film. What
// they do to it does not concern this process: it has limits of its own, and is killed when its
// time is over or nobody wants its answer any more.
//
// Each file is read by a process of its own. One that has started already waits for the next, so
// that no file waits for a start. Safe from any thread, and several files are read at once.
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
  // Ends the one that waits.
  ~ReaderProgram();
  ReaderProgram(const ReaderProgram&) = delete;
  ReaderProgram& operator=(const ReaderProgram&) = delete;

  // Starts one to wait, unless there is one. Does not wait for it to be ready.
  void warmUp();

  // Blocks until the file is read, the request is cancelled or its time is over; whatever happens,
  // the process has been told to end by then. `format` is of an image, as Qt names it. None where
  // the file is not what it was to be, if it was that.
  std::optional<PreviewBody> read(const HeldItem& file, ReaderRequest::Wanted wanted,
                                  std::string_view format, const PreviewRequest& request);

 private:
  std::optional<Process> launched() const;
  std::optional<Process> takeWaiting();
  // One that has been given the request.
  std::optional<Process> asked(const std::string& question);

  const std::string path_;
  std::mutex mutex_;
  std::optional<Process> waiting_;
};

}  // namespace tessaly
