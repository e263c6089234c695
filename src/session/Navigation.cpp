#include "session/Navigation.h"

#include <cstddef>
#include <utility>

#include "scan/Remainder.h"

namespace tessaly {

std::optional<DiskNode> Navigation::current() const {
  if (stack_.empty()) return std::nullopt;
  return stack_.back();
}

void Navigation::back() {
  if (stack_.size() >= 2) jump(static_cast<int>(stack_.size()) - 2);
}

void Navigation::jump(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= stack_.size()) return;
  if (static_cast<std::size_t>(index) + 1 == stack_.size()) return;
  FieldChanges changes;
  stack_.erase(stack_.begin() + index + 1, stack_.end());
  changes.note(this, &Navigation::stackChanged);
  changes.announce();
}

void Navigation::reveal(const DiskNode& node) {
  if (isRemainder(node)) return;
  reveal(node.path());
}

void Navigation::reveal(const std::string& path) {
  workspace_.reveal({path});
}

void Navigation::showTree(FieldChanges& changes, const DiskNode& tree) {
  stack_ = {tree};
  changes.note(this, &Navigation::stackChanged);
}

void Navigation::showChain(FieldChanges& changes, std::vector<DiskNode> chain) {
  changes.set(this, stack_, std::move(chain), &Navigation::stackChanged);
}

void Navigation::push(FieldChanges& changes, const DiskNode& node) {
  stack_.push_back(node);
  changes.note(this, &Navigation::stackChanged);
}

}  // namespace tessaly
