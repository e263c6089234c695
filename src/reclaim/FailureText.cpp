#include "reclaim/FailureText.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>

#include "platform/UnicodeText.h"
#include "scan/Format.h"
#include "scan/PathName.h"

namespace tessaly::FailureText {

namespace {

using Kind = SystemError::Kind;

constexpr std::size_t longestName = 32;  // characters
constexpr std::size_t mostNames = 2;     // for each reason
constexpr std::size_t mostReasons = 3;

// Empty where reasonOfSystem() has the better words.
std::string_view reasonOfMove(const SystemError& cause) {
  // Of the kind alreadyExists, but no name is taken.
  if (cause.code == ENOTEMPTY) return "no longer empty";
  switch (cause.kind) {
    case Kind::notFound:
    case Kind::notADirectory:
      return "not there any more";
    case Kind::alreadyExists:
      return "no free name in the Trash";
    case Kind::crossesDevices:
      return "no Trash on this volume";
    case Kind::changed:
      return "changed since it was listed";
    default:
      break;
  }
  switch (cause.code) {
    case EBUSY:
      return "a volume is mounted there";
    case EINVAL:
      return "in the Trash already, or the Trash is in it";
    case ESTALE:
      return "moved or replaced meanwhile";
    default:
      return {};
  }
}

std::string_view reasonOfPutBack(const Trash::Failure& failure) {
  const SystemError& cause = failure.cause;
  switch (cause.kind) {
    case Kind::notFound:
      return cause.path == failure.path ? "the old folder cannot be made"
                                        : "not found in the Trash";
    case Kind::notADirectory:
      return "a file stands where the old folder was";
    case Kind::alreadyExists:
      return "something else stands at the old place";
    case Kind::crossesDevices:
      return "the old place is on another volume now";
    default:
      break;
  }
  return cause.code == ESTALE ? "another item has the name in the Trash now" : std::string_view();
}

std::string reasonOfSystem(const SystemError& cause) {
  switch (cause.kind) {
    case Kind::noSpace:
      // A disk may have free bytes and still no room for another directory entry.
      return cause.code == EDQUOT ? "the quota on the disk is used up"
                                  : "no space for one more file on the disk";
    case Kind::notPermitted:
      return "not permitted";
    case Kind::readOnly:
      return "the volume is read-only";
    case Kind::nameTooLong:
      return "the name or the path is too long";
    case Kind::tooManyOpenFiles:
      return "too many files are open";
    case Kind::notSupported:
      return "the file system cannot do it";
    default:
      break;
  }
  if (cause.code == ELOOP) return "a link stands where a folder was";
  return cause.code == 0 ? "unknown cause" : std::generic_category().message(cause.code);
}

// Failures with the same reason.
struct Group {
  std::string reason;
  std::size_t count = 0;
  std::vector<std::string> names;  // of the first failed items
};

std::string nameOf(const std::string& path) {
  const std::string_view name = lastPathComponent(path);
  const std::string_view beginning = UnicodeText::firstGraphemes(name, longestName);
  return "“" + std::string(beginning) + (beginning.size() < name.size() ? "…”" : "”");
}

std::vector<Group> grouped(const std::vector<Trash::Failure>& failures, Act act) {
  std::vector<Group> groups;
  for (const Trash::Failure& failure : failures) {
    std::string why = reason(failure, act);
    auto group = std::ranges::find(groups, why, &Group::reason);
    if (group == groups.end()) {
      groups.push_back({.reason = std::move(why), .count = 0, .names = {}});
      group = groups.end() - 1;
    }
    ++group->count;
    if (group->names.size() < mostNames) group->names.push_back(nameOf(failure.path));
  }
  return groups;
}

// "“a”", "“a” and “b”", "“a”, “b” and 3 more".
std::string namesOf(const Group& group) {
  std::string text = group.names.front();
  const bool areMore = group.count > group.names.size();
  for (std::size_t i = 1; i < group.names.size(); ++i) {
    text += (areMore ? ", " : " and ") + group.names[i];
  }
  if (areMore) text += " and " + std::to_string(group.count - group.names.size()) + " more";
  return text;
}

std::string_view verbOf(Act act) {
  return act == Act::putBack ? " could not be put back: " : " could not be moved to the Trash: ";
}

}  // namespace

std::string reason(const Trash::Failure& failure, Act act) {
  const std::string_view words =
      act == Act::putBack ? reasonOfPutBack(failure) : reasonOfMove(failure.cause);
  return words.empty() ? reasonOfSystem(failure.cause) : std::string(words);
}

std::string line(const std::vector<Trash::Failure>& failures, Act act) {
  const std::vector<Group> groups = grouped(failures, act);
  if (groups.empty()) return {};
  if (groups.size() == 1) {
    return namesOf(groups.front()) + std::string(verbOf(act)) + groups.front().reason;
  }
  std::string text = Format::counted(failures.size(), "item") + std::string(verbOf(act));
  std::size_t told = 0;
  for (std::size_t i = 0; i < std::min(groups.size(), mostReasons); ++i) {
    if (i > 0) text += ", ";
    text += namesOf(groups[i]) + " (" + groups[i].reason + ")";
    told += groups[i].count;
  }
  if (told < failures.size()) {
    text += " and " + std::to_string(failures.size() - told) + " more for other reasons";
  }
  return text;
}

}  // namespace tessaly::FailureText
