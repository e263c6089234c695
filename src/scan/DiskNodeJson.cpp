#include "scan/DiskNodeJson.h"

#include <simdjson.h>

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "scan/DiskTree.h"
#include "scan/JsonText.h"

namespace tessaly::DiskNodeJson {

namespace {

template <typename Number>
void appendNumber(std::string& json, Number number) {
  char digits[32];
  const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, number);
  json.append(digits, result.ptr);
}

void appendTime(std::string& json, double seconds) {
  // Up to here every integral double is a 64-bit integer, which has no exponent when written.
  constexpr double integersEnd = 9007199254740992.0;
  if (std::fabs(seconds) < integersEnd && std::trunc(seconds) == seconds) {
    appendNumber(json, static_cast<std::int64_t>(seconds));
  } else {
    appendNumber(json, seconds);
  }
}

// Writes the nodes of a subtree in their order. A path is never put together: that of the parent is
// at hand already escaped, and what a node adds to it follows a "/", so that no character can span
// the seam.
class Encoder {
 public:
  explicit Encoder(const DiskNode& node)
      : tree_(DiskTree::of(node)), top_(DiskTree::indexOf(node)) {}

  std::string encode() {
    const DiskTree::Index end = tree_.entry(top_).end;
    json_.reserve(std::size_t{end - top_} * 160);
    for (DiskTree::Index index = top_; index < end; ++index) {
      closeUpTo(index);
      if (!open_.empty() && index != open_.back().index + 1) json_ += ',';
      beginNode(index);
    }
    closeUpTo(end);
    return std::move(json_);
  }

 private:
  struct OpenNode {
    DiskTree::Index index;
    std::size_t pathLength;  // in path_
  };

  void beginNode(DiskTree::Index index) {
    const DiskTree::Entry& entry = tree_.entry(index);
    json_ += "{\"name\":\"";
    const std::size_t nameBegin = json_.size();
    JsonText::appendEscaped(json_, tree_.name(index));
    extendPath(index, std::string_view(json_).substr(nameBegin));
    json_ += "\",\"path\":\"";
    json_ += path_;
    json_ += "\",\"size\":";
    appendNumber(json_, entry.size);
    json_ += entry.isDir() ? ",\"isDir\":true,\"kind\":\"" : ",\"isDir\":false,\"kind\":\"";
    json_ += rawText(entry.kind);
    json_ += "\",\"children\":[";
    open_.push_back({index, path_.size()});
  }

  void endNode() {
    const DiskTree::Entry& entry = tree_.entry(open_.back().index);
    json_ += ']';
    if (entry.hasMtime() && std::isfinite(entry.mtime)) {
      json_ += ",\"mtime\":";
      appendTime(json_, entry.mtime);
    }
    json_ += '}';
    open_.pop_back();
  }

  void closeUpTo(DiskTree::Index index) {
    while (!open_.empty() && tree_.entry(open_.back().index).end <= index) endNode();
  }

  void extendPath(DiskTree::Index index, std::string_view escapedName) {
    if (index == top_) {
      JsonText::appendEscaped(path_, tree_.path(index));
      return;
    }
    const DiskTree::PathForm form = tree_.entry(index).pathForm();
    if (form == DiskTree::PathForm::absolute) {
      // The nodes that come after it may need the parent's path again.
      path_ = escapedPath(index);
      return;
    }
    restoreParentPath();
    if (!tree_.endsInSlash(open_.back().index)) path_ += '/';
    if (form == DiskTree::PathForm::name) {
      path_ += escapedName;
    } else {
      JsonText::appendEscaped(path_, tree_.pathPart(index));
    }
  }

  void restoreParentPath();
  std::string escapedPath(DiskTree::Index index) const;

  const DiskTree& tree_;
  DiskTree::Index top_;
  std::vector<OpenNode> open_;
  std::string path_;
  std::string json_;
};

}  // namespace

}  // namespace tessaly::DiskNodeJson
