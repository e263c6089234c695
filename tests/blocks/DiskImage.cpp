#include "blocks/DiskImage.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/fs.h>
#include <random>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "scan/DiskScanner.h"
#include "support/Descriptor.h"
#include "support/PrivateMounts.h"

namespace tessaly {

namespace {

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::strerror(errno));
}

Descriptor opened(const std::string& path, int flags) {
  Descriptor file(open(path.c_str(), flags | O_CLOEXEC, 0644));
  if (!file) fail(path);
  return file;
}

void store(const Descriptor& file, const std::string& path) {
  if (fsync(file.get()) != 0) fail("fsync " + path);
}

std::string sizeText(std::int64_t bytes) {
  return bytes % MiB == 0 ? std::to_string(bytes / MiB) + " MiB" : std::to_string(bytes) + " bytes";
}

}  // namespace

DiskImage::DiskImage(const FileSystem& system)
    : system_(system), tree_("disk sparse=320M\ntop/\n") {}

std::string DiskImage::run(const std::function<std::string()>& body) const {
  return inPrivateMounts([&]() -> std::string {
    const std::string make =
        system_.make + " '" + image() + "' && mount -o loop '" + image() + "' '" + top() + "'";
    if (std::system(("{ " + make + "; } >&2").c_str()) != 0) {
      return "refused: " + needs(system_.need, make);
    }
    return body();
  });
}

void DiskImage::shell(const std::string& command) {
  if (std::system(("{ " + command + "; } >&2").c_str()) != 0) throw std::runtime_error(command);
}

std::string DiskImage::outputOf(const std::string& command) {
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) fail(command);
  std::string output;
  char buffer[4096];
  while (const std::size_t count = fread(buffer, 1, sizeof buffer, pipe)) {
    output.append(buffer, count);
  }
  if (pclose(pipe) != 0) throw std::runtime_error(command);
  return output;
}

void DiskImage::write(const std::string& below, std::int64_t size, std::int64_t offset) const {
  static std::mt19937_64 engine{11};
  std::string bytes(static_cast<std::size_t>(size), '\0');
  for (std::size_t i = 0; i < bytes.size(); i += 8) {
    const std::uint64_t number = engine();
    std::memcpy(bytes.data() + i, &number, std::min<std::size_t>(8, bytes.size() - i));
  }
  const Descriptor file = opened(at(below), O_WRONLY | O_CREAT);
  if (pwrite(file.get(), bytes.data(), bytes.size(), offset) != size) fail("write " + below);
  store(file, below);
}

void DiskImage::writeEverySecondBlock(const std::string& below, int blocks) const {
  const Descriptor file = opened(at(below), O_WRONLY | O_CREAT);
  // XFS reserves blocks for a file that grows, and so fills the holes.
  if (ftruncate(file.get(), 2 * blocks * 4 * KiB) != 0) fail("truncate " + below);
  for (int i = 0; i < blocks; ++i) {
    const std::string bytes(4 * KiB, static_cast<char>('a' + i % 26));
    if (pwrite(file.get(), bytes.data(), bytes.size(), i * 8 * KiB) != 4 * KiB) fail("write");
  }
  store(file, below);
}

void DiskImage::clone(const std::string& from, const std::string& to) const {
  const Descriptor source = opened(at(from), O_RDONLY);
  const Descriptor target = opened(at(to), O_WRONLY | O_CREAT);
  if (ioctl(target.get(), FICLONE, source.get()) != 0) fail("clone " + to);
  store(target, to);
}

void DiskImage::clonePart(const std::string& from, const std::string& to, std::int64_t offset,
                          std::int64_t size, std::optional<std::int64_t> toOffset) const {
  const Descriptor source = opened(at(from), O_RDONLY);
  const Descriptor target = opened(at(to), O_WRONLY | O_CREAT);
  file_clone_range part{};
  part.src_fd = source.get();
  part.src_offset = static_cast<std::uint64_t>(offset);
  part.dest_offset = static_cast<std::uint64_t>(toOffset.value_or(offset));
  part.src_length = static_cast<std::uint64_t>(size);
  if (ioctl(target.get(), FICLONERANGE, &part) != 0) fail("clone a part to " + to);
  store(target, to);
}

void DiskImage::link(const std::string& from, const std::string& to) const {
  if (::link(at(from).c_str(), at(to).c_str()) != 0) fail("link " + to);
}

std::vector<ShareRecord> DiskImage::records(const std::vector<std::string>& below) const {
  std::vector<DiskNode> files;
  for (const std::string& name : below) {
    struct stat status {};
    if (lstat(at(name).c_str(), &status) != 0) fail(name);
    files.push_back(DiskNode({.name = name, .path = at(name), .size = status.st_blocks * 512}));
  }
  return CloneEngine::collect(DiskNode({.name = "top", .path = top(), .isDir = true}, files), 400);
}

std::string DiskImage::found(std::int64_t least) const {
  return linesOf(CloneEngine::groups(CloneEngine::collect(DiskScanner::scan(top()), 400), least),
                 top());
}

std::string linesOf(const std::vector<ShareGroup>& groups, const std::string& top) {
  std::string text;
  for (const ShareGroup& group : groups) {
    std::vector<std::string> names;
    for (const ShareRecord& record : group.files) {
      names.push_back(record.path.substr(top.size() + 1));
    }
    std::sort(names.begin(), names.end());
    text += group.kind;
    for (const std::string& name : names) text += " " + name;
    text += ", " + sizeText(group.logical) + " on " + sizeText(group.unique) + "\n";
  }
  return text;
}

std::string difference(const std::string& found, const std::string& expected) {
  return found == expected ? "" : "found:\n" + found + "expected:\n" + expected;
}

}  // namespace tessaly
