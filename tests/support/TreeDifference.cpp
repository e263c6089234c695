#include "support/TreeDifference.h"

#include <iomanip>
#include <sstream>

namespace tessaly {
namespace {

std::string worded(const std::optional<double>& time) {
  if (!time) return "none";
  std::ostringstream text;
  text << std::setprecision(20) << *time;
  return text.str();
}

void write(const DiskNode& node, int level, std::ostringstream& text) {
  text << std::string(static_cast<std::size_t>(level) * 2, ' ') << node.name()
       << (node.isDir() ? "/ " : " ") << node.size() << " " << rawText(node.kind());
  if (node.mtime()) text << " @" << worded(node.mtime());
  text << "\n";
  for (const DiskNode& child : node.children()) write(child, level + 1, text);
}

}  // namespace

std::string differenceOf(const DiskNode& expected, const DiskNode& actual) {
  const auto told = [&](const std::string& field, const auto& a, const auto& b) {
    std::ostringstream text;
    text << field << " of " << expected.path() << ": expected " << a << ", got " << b;
    return text.str();
  };
  if (expected.path() != actual.path()) return told("path", expected.path(), actual.path());
  if (expected.name() != actual.name()) return told("name", expected.name(), actual.name());
  if (expected.size() != actual.size()) return told("size", expected.size(), actual.size());
  if (expected.isDir() != actual.isDir()) return told("isDir", expected.isDir(), actual.isDir());
  if (expected.kind() != actual.kind()) {
    return told("kind", rawText(expected.kind()), rawText(actual.kind()));
  }
  if (expected.mtime() != actual.mtime()) {
    return told("mtime", worded(expected.mtime()), worded(actual.mtime()));
  }
  const auto a = expected.children();
  const auto b = actual.children();
  auto left = a.begin();
  auto right = b.begin();
  for (; left != a.end() && right != b.end(); ++left, ++right) {
    if (auto difference = differenceOf(*left, *right); !difference.empty()) return difference;
  }
  if (a.size() != b.size()) return told("number of children", a.size(), b.size());
  return expected == actual ? "" : "operator== sees a difference in " + expected.path();
}

std::string treeText(const DiskNode& node) {
  std::ostringstream text;
  write(node, 0, text);
  return text.str();
}

}  // namespace tessaly
