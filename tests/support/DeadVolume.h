// A mounted file system that never answers, like one whose server is gone. It records which process
// asked and is waiting.
#pragma once

#include <string>
#include <sys/types.h>

namespace tessaly {

class DeadVolume {
 public:
  DeadVolume();
  // Pending questions fail with an error.
  ~DeadVolume();
  DeadVolume(const DeadVolume&) = delete;
  DeadVolume& operator=(const DeadVolume&) = delete;

  // Mounts it on /media/dead, for the calling process and its children only. Call it once, in a
  // child between fork and exec. False if the system refuses, as it does to everyone but root.
  bool mountInChild() const;

  bool isMounted() const;

  // Reads questions until one comes from a thread of `process`, and answers none. False if none has
  // come within a minute.
  bool isAskedBy(pid_t process);

 private:
  int device_;
  std::string options_;  // written before the fork: the child must not allocate
};

}  // namespace tessaly
