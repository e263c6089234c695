#include "support/SequentialTree.h"

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <stdexcept>

#include "scan/FileKindRules.h"

namespace tessaly::SequentialScan {
namespace {

constexpr std::int64_t smallFileLimit = 262144;
constexpr int depthLimit = 12;
constexpr std::size_t childLimit = 80;

void update(Acc& acc, std::int64_t size, std::optional<double> mtime) {
  acc.size += size;
  if (mtime) acc.mtime = std::max(acc.mtime, *mtime);
}

DiskNode remainderNode(const Acc& acc, std::size_t count, std::int64_t size) {
  DiskNode::Fields fields;
  fields.name = "+ " + std::to_string(count) + " more";
  fields.path = appended(acc.path, "__rest__");
  fields.size = size;
  return DiskNode(fields);
}

std::vector<DiskNode> frozenChildren(const Acc& acc, int depth, const std::string& parentName,
                                     bool expandPackages, const FolderNames& important) {
  const bool keepSmall = important.contains(parentName) || important.contains(acc.name);
  std::vector<DiskNode> all;
  for (const auto& [name, child] : acc.children) {
    all.push_back(freeze(*child, depth + 1, acc.name, expandPackages, important));
  }
  std::stable_sort(all.begin(), all.end(),
                   [](const DiskNode& a, const DiskNode& b) { return a.size() > b.size(); });
  std::vector<DiskNode> kept;
  for (const DiskNode& child : all) {
    if (child.isDir() || keepSmall || child.size() >= smallFileLimit) kept.push_back(child);
  }
  if (kept.size() <= childLimit) return kept;
  std::int64_t remainder = 0;
  for (std::size_t place = childLimit; place < kept.size(); ++place) {
    remainder += kept[place].size();
  }
  const std::size_t merged = kept.size() - childLimit;
  kept.resize(childLimit);
  if (remainder >= 1) kept.push_back(remainderNode(acc, merged, remainder));
  return kept;
}

}  // namespace

Acc::~Acc() {
  std::vector<std::unique_ptr<Acc>> waiting;
  const auto takeChildren = [&](Acc& from) {
    for (auto& [key, child] : from.children) waiting.push_back(std::move(child));
    from.children.clear();
  };
  takeChildren(*this);
  while (!waiting.empty()) {
    const std::unique_ptr<Acc> one = std::move(waiting.back());
    waiting.pop_back();
    takeChildren(*one);
  }
}

std::string appended(const std::string& folder, const std::string& component) {
  return (folder == "/" ? "" : folder) + "/" + component;
}

std::string lowerCased(const std::string& text) {
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode == nullptr) throw std::runtime_error("no locale C.UTF-8");
  const locale_t before = uselocale(unicode);
  std::string lower;
  for (std::size_t i = 0; i < text.size();) {
    wchar_t character = 0;
    std::mbstate_t state{};
    const std::size_t length = std::mbrtowc(&character, text.data() + i, text.size() - i, &state);
    if (length == 0 || length > text.size()) {
      lower += text[i++];
      continue;
    }
    char bytes[16];
    state = {};
    lower.append(
        bytes, std::wcrtomb(
                   bytes, static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(character))),
                   &state));
    i += length;
  }
  uselocale(before);
  return lower;
}

void add(Acc& acc, const std::vector<std::string>& parts, std::int64_t size, bool isDir,
         const std::string& fullRoot, std::optional<double> mtime, const FolderNames& important) {
  update(acc, size, mtime);
  Acc* cursor = &acc;
  std::string running = fullRoot;
  for (std::size_t place = 0; place < parts.size(); ++place) {
    const std::string& part = parts[place];
    const bool last = place + 1 == parts.size();
    if (running != "/") running += '/';
    running += part;
    if (last && !isDir && size < smallFileLimit && !important.contains(cursor->name)) {
      update(*cursor, size, mtime);
      return;
    }
    std::unique_ptr<Acc>& child = cursor->children[part];
    if (!child) {
      child = std::make_unique<Acc>();
      child->name = part;
      child->path = running;
      child->isDir = !last || isDir;
    }
    update(*child, size, mtime);
    if (last) {
      child->isDir = isDir;
    } else if (child->isDir && lowerCased(child->name).ends_with(".app")) {
      return;
    }
    cursor = child.get();
  }
}

DiskNode freeze(const Acc& acc, int depth, const std::string& parentName, bool expandPackages,
                const FolderNames& important) {
  DiskNode::Fields fields;
  fields.name = acc.name;
  fields.path = acc.path;
  fields.size = acc.size;
  fields.isDir = acc.isDir;
  fields.kind = FileKindRules::classify(acc.name, acc.isDir);
  if (acc.mtime > 0) fields.mtime = acc.mtime;
  const bool opens =
      acc.isDir && depth < depthLimit && (fields.kind != FileKind::app || expandPackages);
  if (!opens) return DiskNode(fields);
  return DiskNode(fields, frozenChildren(acc, depth, parentName, expandPackages, important));
}

}  // namespace tessaly::SequentialScan
