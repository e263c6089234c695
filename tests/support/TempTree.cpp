#include "support/TempTree.h"

#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <span>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "support/Descriptor.h"
#include "support/TreeLine.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// The largest block in which file systems allocate space on machines that run these tests.
constexpr std::int64_t block = 4096;

void makeFile(int folder, const std::string& name, const TreeLine& line) {
  const Descriptor file(
      openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!file) fail(line.source);
  if (line.allocated > 0 && line.allocated % block == 0) {
    if (posix_fallocate(file.get(), 0, line.allocated) != 0) fail(line.source);
  } else if (line.allocated > 0) {
    const std::string bytes(static_cast<std::size_t>(line.allocated), 'x');
    if (write(file.get(), bytes.data(), bytes.size()) != line.allocated) fail(line.source);
  }
  if (line.sparseLength > 0 && ftruncate(file.get(), line.sparseLength) != 0) fail(line.source);
  struct stat status {};
  if (fchmod(file.get(), line.mode) != 0 || fstat(file.get(), &status) != 0) fail(line.source);
  if (line.allocated % block == 0 && status.st_blocks * 512 != line.allocated) {
    errno = ENOTSUP;
    fail("the file system gives another room than asked: " + line.source);
  }
}

void makeItem(int top, int folder, const std::string& name, const TreeLine& line) {
  const auto check = [&](int result) {
    if (result != 0) fail(line.source);
  };
  switch (line.form) {
    case TreeLine::Form::folder:
      check(mkdirat(folder, name.c_str(), 0700));
      return;
    case TreeLine::Form::link:
      check(symlinkat(line.target.c_str(), folder, name.c_str()));
      break;
    case TreeLine::Form::hardLink:
      check(linkat(top, line.target.c_str(), folder, name.c_str(), 0));
      return;
    case TreeLine::Form::fifo:
      check(mknodat(folder, name.c_str(), S_IFIFO | 0600, 0));
      check(fchmodat(folder, name.c_str(), line.mode, 0));
      break;
    case TreeLine::Form::socket:
      check(mknodat(folder, name.c_str(), S_IFSOCK | 0600, 0));
      check(fchmodat(folder, name.c_str(), line.mode, 0));
      break;
    case TreeLine::Form::file:
      if (line.allocated == 0 && line.sparseLength == 0) {
        check(mknodat(folder, name.c_str(), S_IFREG | 0600, 0));
        check(fchmodat(folder, name.c_str(), line.mode, 0));
      } else {
        makeFile(folder, name, line);
      }
      break;
  }
  const timespec times[2] = {line.mtime, line.mtime};
  check(utimensat(folder, name.c_str(), times, AT_SYMLINK_NOFOLLOW));
}

Descriptor openFolder(int folder, const std::string& name) {
  return Descriptor(openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

struct Entry {
  std::string name;
  bool isFolder = false;
};

std::vector<Entry> entriesOf(int folder) {
  std::vector<Entry> found;
  DIR* const stream = fdopendir(openFolder(folder, ".").release());
  if (stream == nullptr) return found;
  while (const dirent* entry = readdir(stream)) {
    const std::string name = entry->d_name;
    struct stat status {};
    if (name == "." || name == "..") continue;
    fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW);
    found.push_back({name, S_ISDIR(status.st_mode)});
  }
  closedir(stream);
  return found;
}

// Removes trees from within one folder, level by level: the contents of its folders are first moved
// up into it, so that no tree is too deep.
class Removal {
 public:
  explicit Removal(int top) : top_(top) {}

  bool run() {
    for (auto entries = entriesOf(top_); !entries.empty(); entries = entriesOf(top_)) {
      const std::size_t before = steps_;
      for (const Entry& entry : entries) {
        if (entry.isFolder) {
          empty(entry.name);
        } else {
          count(unlinkat(top_, entry.name.c_str(), 0));
        }
      }
      if (steps_ == before) return false;
    }
    return true;
  }

 private:
  void count(int result) {
    if (result == 0) ++steps_;
  }

  void empty(const std::string& name) {
    fchmodat(top_, name.c_str(), 0700, 0);
    const Descriptor folder = openFolder(top_, name);
    if (!folder) return;
    for (const Entry& entry : entriesOf(folder.get())) {
      if (!entry.isFolder) {
        count(unlinkat(folder.get(), entry.name.c_str(), 0));
        continue;
      }
      const std::string place = ".hoisted-" + std::to_string(hoisted_++);
      fchmodat(folder.get(), entry.name.c_str(), 0700, 0);
      count(renameat(folder.get(), entry.name.c_str(), top_, place.c_str()));
    }
    count(unlinkat(top_, name.c_str(), AT_REMOVEDIR));
  }

  int top_;
  std::size_t steps_ = 0;
  std::size_t hoisted_ = 0;
};

using Lines = std::span<const TreeLine>;

// The lines of the items inside the item of the first line.
Lines linesBelow(Lines lines) {
  std::size_t count = 0;
  while (count + 1 < lines.size() && lines[count + 1].indent > lines[0].indent) ++count;
  return lines.subspan(1, count);
}

void plantLines(int top, int folder, Lines lines) {
  while (!lines.empty()) {
    const TreeLine& line = lines[0];
    const Lines inner = linesBelow(lines);
    for (int copy = 0; copy < line.times; ++copy) {
      const std::string name = line.nameOf(copy);
      makeItem(top, folder, name, line);
      if (line.form != TreeLine::Form::folder) continue;
      const Descriptor made = openFolder(folder, name);
      if (!made) fail(line.source);
      plantLines(top, made.get(), inner);
      // At the end, since adding items changes the time of a folder, and its mode may forbid it.
      const timespec times[2] = {line.mtime, line.mtime};
      if (futimens(made.get(), times) != 0 || fchmod(made.get(), line.mode) != 0) fail(line.source);
    }
    lines = lines.subspan(1 + inner.size());
  }
}

// Where trees of a hundred thousand files are created and removed fastest: in memory, if there is
// plenty of it and TMPDIR is not set.
std::string placeForTrees() {
  std::string memory = "/dev/shm";
  constexpr std::uint64_t enoughBytes = std::uint64_t{1} << 30;
  constexpr std::uint64_t enoughFiles = 600000;
  struct statvfs system {};
  if (std::getenv("TMPDIR") == nullptr && access(memory.c_str(), W_OK | X_OK) == 0 &&
      statvfs(memory.c_str(), &system) == 0 && system.f_favail >= enoughFiles &&
      std::uint64_t{system.f_bavail} * system.f_frsize >= enoughBytes) {
    return memory;
  }
  return fs::temp_directory_path().native();
}

}  // namespace

void plantTree(int top, int folder, std::string_view text) {
  plantLines(top, folder, parseTreeLines(text));
}

TempTree::TempTree(std::string_view text) {
  std::string place = placeForTrees() + "/tessaly-XXXXXX";
  if (mkdtemp(place.data()) == nullptr) fail(place);
  path_ = fs::canonical(place).native();
  if (chmod(path_.c_str(), 0755) != 0) fail(path_);
  try {
    plant(text);
  } catch (...) {
    removeTree(path_);
    throw;
  }
}

TempTree::~TempTree() {
  removeTree(path_);
}

void TempTree::plant(std::string_view below, std::string_view text) {
  const Descriptor top = openFolder(AT_FDCWD, path_);
  const Descriptor folder = openFolder(top.get(), "./" + std::string(below));
  if (!top || !folder) fail(at(below));
  plantTree(top.get(), folder.get(), text);
}

void TempTree::chain(std::string_view below, const std::string& name, int depth,
                     const std::function<void(int, int)>& furnish) {
  Descriptor folder = openFolder(AT_FDCWD, at(below));
  for (int level = 1; level <= depth; ++level) {
    if (mkdirat(folder.get(), name.c_str(), 0755) != 0) fail(name);
    Descriptor next = openFolder(folder.get(), name);
    if (!next) fail(name);
    if (furnish) furnish(next.get(), level);
    folder = std::move(next);
  }
}

std::int64_t TempTree::allocated(std::string_view below) const {
  struct stat status {};
  if (lstat(at(below).c_str(), &status) != 0) fail(at(below));
  return std::int64_t{status.st_blocks} * 512;
}

std::int64_t TempTree::length(std::string_view below) const {
  struct stat status {};
  if (lstat(at(below).c_str(), &status) != 0) fail(at(below));
  return status.st_size;
}

bool removeTree(const std::string& path) {
  chmod(path.c_str(), 0700);
  const Descriptor top = openFolder(AT_FDCWD, path);
  if (!top) return false;
  if (!Removal(top.get()).run()) return false;
  return rmdir(path.c_str()) == 0;
}

}  // namespace tessaly
