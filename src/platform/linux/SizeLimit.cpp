#include "platform/SizeLimit.h"

#include <csignal>

namespace tessaly::SizeLimit {

void failWritesBeyond() {
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace tessaly::SizeLimit
