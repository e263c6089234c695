// The login item as a file among those that sessions start, by the Desktop Application Autostart
// Specification of freedesktop.org. Main thread only.
#pragma once

#include <string>

#include "platform/LoginItem.h"

namespace tessaly {

class AutostartLoginItem final : public LoginItem {
 public:
  // The folder where sessions look, and the path of our executable. Neither has to be there.
  AutostartLoginItem(const std::string& folder, std::string executable);

  // Whether the file is there and starts our executable. One that starts something else under our
  // name, or that the user has switched off in the settings of the desktop, does not count.
  bool isEnabled() const override;

  // Writes the file, over whatever file has its name, or removes it. Removes nothing that does not
  // start our executable.
  bool setEnabled(bool on) override;

 private:
  std::string folder_;
  std::string path_;
  std::string executable_;
};

}  // namespace tessaly
