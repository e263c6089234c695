#include "platform/linux/AutostartLoginItem.h"

#include <cstddef>
#include <unistd.h>
#include <utility>

#include "platform/ApplicationSupport.h"
#include "platform/AtomicFile.h"
#include "platform/linux/AutostartEntry.h"

namespace tessaly {

namespace {

// Such files have a few hundred bytes, with all translations some thousand.
constexpr std::size_t largestFile = std::size_t{256} << 10U;

}  // namespace

AutostartLoginItem::AutostartLoginItem(const std::string& folder, std::string executable)
    : folder_(folder), path_(folder + "/tessaly.desktop"), executable_(std::move(executable)) {}

bool AutostartLoginItem::isEnabled() const {
  const Result<std::string> text = AtomicFile::read(path_, largestFile);
  return text && AutostartEntry::starts(text.value(), executable_);
}

bool AutostartLoginItem::setEnabled(bool on) {
  if (on == isEnabled()) return true;
  if (!on) {
    ::unlink(path_.c_str());
  } else if (makeFolders(folder_)) {
    AtomicFile::replace(path_, AutostartEntry::starting(executable_),
                        AtomicFile::Durability::synced, AtomicFile::Access::usual)
        .ok();
  }
  return on == isEnabled();
}

}  // namespace tessaly
