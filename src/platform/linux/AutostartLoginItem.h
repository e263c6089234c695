// The login item as a file in the folder that sessions read, by the Desktop Application Autostart
// Specification of freedesktop.org. Main thread only.
#pragma once

#include <string>

#include "platform/LoginItem.h"

namespace tessaly {

class AutostartLoginItem final : public LoginItem {
 public:
  // `folder` is the autostart folder of sessions, `executable` the path of this program. Neither
  // has to exist.
  AutostartLoginItem(const std::string& folder, std::string executable);

  // Whether the file exists and starts this executable. A file that starts another program, or that
  // the user has disabled in the settings of the desktop, does not count.
  bool isEnabled() const override;

  // Writes the file, replacing any file of its name, or removes it. Does not remove a file that
  // starts another executable.
  bool setEnabled(bool on) override;

 private:
  std::string folder_;
  std::string path_;
  std::string executable_;
};

}  // namespace tessaly
