#include "trash/TrashOnDisk.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/linux/trash/KnownItems.h"
#include "support/PlainFiles.h"

namespace tessaly {

namespace fs = std::filesystem;

std::string infoPathOf(const std::string& trashPath) {
  const fs::path path(trashPath);
  return (path.parent_path().parent_path() / "info" / path.filename()).string() + ".trashinfo";
}

std::string recordedPath(const std::string& trashPath) {
  const std::string text = contentOf(infoPathOf(trashPath));
  const std::string head = "[Trash Info]\nPath=";
  if (!text.starts_with(head)) return "";
  const std::string encoded = text.substr(head.size(), text.find('\n', head.size()) - head.size());
  std::string path;
  for (std::size_t i = 0; i < encoded.size(); ++i) {
    if (encoded[i] == '%') {
      path += static_cast<char>(std::stoi(encoded.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      path += encoded[i];
    }
  }
  return path;
}

ItemInTrash knownInTrash(const std::string& trashPath) {
  const fs::path path(trashPath);
  const FileDescriptor files(::open(path.parent_path().c_str(), O_PATH | O_CLOEXEC));
  const FileDescriptor item(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
  const Result<KnownItems> known = KnownItems::in(files, trashPath);
  EXPECT_TRUE(known);
  if (!known) return {};
  const Result<TrashIdentity> identity =
      known.value().identityOf(item, contentOf(infoPathOf(trashPath)), trashPath);
  EXPECT_TRUE(identity);
  return {.path = trashPath, .identity = identity ? identity.value() : TrashIdentity()};
}

bool isThere(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0;
}

std::string told(const Outcome& outcome) {
  return outcome ? "" : outcome.error().description();
}

std::string told(const Result<ItemInTrash>& moved) {
  return moved ? "" : moved.error().description();
}

std::string told(const EmptiedTrash& emptied) {
  if (emptied.isComplete()) return "";
  std::string text = std::to_string(emptied.failures) + " failed";
  for (const SystemError& error : emptied.errors) {
    text += "; " + error.path.substr(0, 500) + ": " + std::to_string(error.code);
  }
  return text;
}

std::int64_t anHourLater(const FileDescriptor& folder) {
  return clockOfFolder(folder) + 3600;
}

TrashConfig TrashOnDisk::configWith(const std::vector<std::string>& points) const {
  std::string list;
  for (const std::string& point : points) list += "1 1 8:1 / " + point + " rw - ext4 none rw\n";
  TrashConfig alone = config();
  alone.mountinfo = tree.at("mountinfo" + std::to_string(points.size()));
  putFile(alone.mountinfo, list);
  return alone;
}

void TrashOnDisk::put(const std::string& path, const std::string& content) {
  fs::create_directories(fs::path(path).parent_path());
  putFile(path, content);
}

void TrashOnDisk::takeOut(const std::string& trashPath) {
  fs::remove_all(trashPath);
  fs::remove(infoPathOf(trashPath));
}

std::string TrashOnDisk::contentOf(const std::string& path) {
  return tessaly::contentOf(path);
}

std::vector<std::string> TrashOnDisk::namesIn(const std::string& folder) {
  return isThere(folder) ? entriesOf(folder) : std::vector<std::string>();
}

void TrashOnDisk::removeTreeOrFile(const std::string& path) {
  fs::remove_all(path);
}

}  // namespace tessaly
