#include "scan/DiskNodeJson.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <simdjson.h>
#include <vector>

#include "scan/DiskTree.h"
#include "scan/JsonDom.h"
#include "scan/JsonNumber.h"
#include "scan/JsonText.h"

namespace tessaly::DiskNodeJson {

namespace {

// Writes the nodes of a subtree in pre-order. No path is built as a whole: the escaped path of the
// parent is reused, and the part that a node adds follows a "/", so no character can span the
// joint.
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
    std::size_t pathBegin;  // range of its escaped path in paths_
    std::size_t pathEnd;
  };

  void beginNode(DiskTree::Index index) {
    const DiskTree::Entry& entry = tree_.entry(index);
    json_ += "{\"name\":\"";
    const std::size_t nameBegin = json_.size();
    JsonText::appendEscaped(json_, tree_.name(index));
    openPath(index, std::string_view(json_).substr(nameBegin));
    json_ += "\",\"path\":\"";
    json_.append(paths_, open_.back().pathBegin);
    json_ += "\",\"size\":";
    JsonNumber::appendInteger(json_, entry.size);
    json_ += entry.isDir() ? ",\"isDir\":true,\"kind\":\"" : ",\"isDir\":false,\"kind\":\"";
    json_ += rawText(entry.kind);
    json_ += "\",\"children\":[";
  }

  void endNode() {
    const DiskTree::Entry& entry = tree_.entry(open_.back().index);
    json_ += ']';
    if (entry.hasMtime() && std::isfinite(entry.mtime)) {
      json_ += ",\"mtime\":";
      JsonNumber::appendDouble(json_, entry.mtime);
    }
    json_ += '}';
    open_.pop_back();
  }

  void closeUpTo(DiskTree::Index index) {
    while (!open_.empty() && tree_.entry(open_.back().index).end <= index) endNode();
  }

  void openPath(DiskTree::Index index, std::string_view escapedName) {
    const DiskTree::PathForm form = tree_.entry(index).pathForm();
    const std::size_t parentEnd = open_.empty() ? 0 : open_.back().pathEnd;
    paths_.resize(parentEnd);
    std::size_t begin = parentEnd;
    if (open_.empty()) {
      JsonText::appendEscaped(paths_, tree_.path(index));
    } else if (form == DiskTree::PathForm::absolute) {
      JsonText::appendEscaped(paths_, tree_.pathPart(index));
    } else {
      begin = open_.back().pathBegin;
      if (!tree_.endsInSlash(open_.back().index)) paths_ += '/';
      if (form == DiskTree::PathForm::name) {
        paths_ += escapedName;
      } else {
        JsonText::appendEscaped(paths_, tree_.pathPart(index));
      }
    }
    open_.push_back({index, begin, paths_.size()});
  }

  const DiskTree& tree_;
  DiskTree::Index top_;
  std::vector<OpenNode> open_;
  std::string paths_;
  std::string json_;
};

// Reads a parsed file from the top down and stops at the first error.
class Decoder {
 public:
  std::optional<DiskNode> decode(std::string_view json) {
    simdjson::dom::parser parser;
    simdjson::dom::element top;
    if (!JsonDom::parse(parser, json, top) || !addNode(top, {}, 0)) return std::nullopt;
    return builder_.finish();
  }

 private:
  // Recurses no deeper than maximumDepth. `parentPath` is the JSON text of the open node's path.
  bool addNode(const simdjson::dom::element& element, std::string_view parentPath, int depth) {
    if (depth > maximumDepth) return false;
    simdjson::dom::object fields;
    if (element.get(fields) != simdjson::SUCCESS) return false;

    std::optional<std::string_view> name;
    std::optional<std::string_view> path;
    std::optional<std::string_view> kindText;
    std::optional<std::int64_t> size;
    std::optional<bool> isDir;
    std::optional<simdjson::dom::array> children;
    std::optional<double> mtime;
    for (const simdjson::dom::key_value_pair field : fields) {
      const std::string_view key = field.key;
      const bool isRead = key == "name"       ? JsonDom::read(field.value, name)
                          : key == "path"     ? JsonDom::read(field.value, path)
                          : key == "size"     ? JsonDom::read(field.value, size)
                          : key == "isDir"    ? JsonDom::read(field.value, isDir)
                          : key == "kind"     ? JsonDom::read(field.value, kindText)
                          : key == "children" ? JsonDom::read(field.value, children)
                          : key == "mtime"    ? readTime(field.value, mtime)
                                              : true;
      if (!isRead) return false;
    }
    if (!name || !path || !size || !isDir || !kindText || !children) return false;
    const std::optional<FileKind> kind = fileKindFromRawText(*kindText);
    if (!kind || *size < 0 || __builtin_add_overflow(total_, *size, &total_)) return false;
    if (holdsNul(*name) || holdsNul(*path)) return false;

    openNode({asBytes(*name, nameBytes_), *size, *isDir, *kind, mtime}, *name, *path,
             depth == 0 ? std::nullopt : componentBelow(parentPath, *path));
    for (const simdjson::dom::element child : *children) {
      if (!addNode(child, *path, depth + 1)) return false;
    }
    builder_.close();
    return true;
  }

  // The part that `path` adds to `parentPath`; absent when `path` does not begin with it. Texts
  // with the same beginning stand for bytes with the same beginning, so most paths need no
  // decoding.
  static std::optional<std::string_view> componentBelow(std::string_view parentPath,
                                                        std::string_view path) {
    if (!path.starts_with(parentPath)) return std::nullopt;
    path.remove_prefix(parentPath.size());
    if (parentPath.ends_with('/')) return path;
    if (!path.starts_with('/')) return std::nullopt;
    return path.substr(1);
  }

  void openNode(const DiskTreeItem& item, std::string_view nameText, std::string_view pathText,
                std::optional<std::string_view> component) {
    if (!component) {
      builder_.open(item, asBytes(pathText, pathBytes_));
    } else if (*component == nameText) {
      builder_.openBelow(item);
    } else {
      builder_.openBelow(item, asBytes(*component, pathBytes_));
    }
  }

  // Accepts whole numbers as well, and null for an absent time.
  static bool readTime(const simdjson::dom::element& element, std::optional<double>& value) {
    if (element.is_null()) {
      value.reset();
      return true;
    }
    return JsonDom::read(element, value);
  }

  // The system would cut such a path at the NUL, and so name another item.
  static bool holdsNul(std::string_view text) { return text.find('\0') != std::string_view::npos; }

  static std::string_view asBytes(std::string_view text, std::string& storage) {
    if (!JsonText::holdsBytes(text)) return text;
    storage = JsonText::bytesOf(text);
    return storage;
  }

  DiskTreeBuilder builder_;
  std::int64_t total_ = 0;
  std::string nameBytes_;
  std::string pathBytes_;
};

}  // namespace

std::string encode(const DiskNode& node) {
  return Encoder(node).encode();
}

std::optional<DiskNode> decode(std::string_view json) {
  return Decoder().decode(json);
}

}  // namespace tessaly::DiskNodeJson
