#include "platform/WriteNote.h"

#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include "platform/ResolvedPath.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PrivateFile.h"
#include "platform/linux/PrivateName.h"
#include "platform/linux/Uninterrupted.h"

namespace tessaly {

struct WriteNote::State {
  explicit State(FileDescriptor notes)
      : folder(std::move(notes)), name(PrivateName::ofNote()), note(folder.get(), 0600) {}
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() {
    if (isNamed) ::unlinkat(folder.get(), name.c_str(), 0);
  }

  bool write(const std::string& place) {
    isNamed = note.isThere() && note.write(place) && note.close() && note.moveTo(name);
    return isNamed;
  }

  FileDescriptor folder;
  std::string name;
  PrivateFile note;
  bool isNamed = false;
};

WriteNote::WriteNote(std::unique_ptr<State> state) : state_(std::move(state)) {}
WriteNote::WriteNote(WriteNote&& other) noexcept = default;
WriteNote& WriteNote::operator=(WriteNote&& other) noexcept = default;
WriteNote::~WriteNote() = default;

WriteNote WriteNote::of(const std::string& target, const std::string& notes) {
  // `target` may be a link, which is followed when the file is replaced.
  const std::string file = resolvedPath(target);
  const std::size_t slash = file.rfind('/');
  FileDescriptor folder(
      uninterrupted([&] { return ::open(notes.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
  if (!folder || slash == std::string::npos) return WriteNote(nullptr);
  auto state = std::make_unique<State>(std::move(folder));
  if (!state->write(file.substr(0, slash == 0 ? 1 : slash))) return WriteNote(nullptr);
  return WriteNote(std::move(state));
}

}  // namespace tessaly
