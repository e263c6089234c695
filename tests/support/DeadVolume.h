// A mounted file system that never answers, as one does whose server is gone: of each question to
// it is known who asked, and that he still waits.
#pragma once

#include <string>
#include <sys/types.h>

namespace tessaly {

class DeadVolume {
 public:
  DeadVolume();
  // Whoever waits for an answer gets an error.
  ~DeadVolume();
  DeadVolume(const DeadVolume&) = delete;
  DeadVolume& operator=(const DeadVolume&) = delete;

  // Mounts it on /media/dead, for the calling process and its children alone. To be called once,
  // in a child between fork and exec. False where that is refused,
  // as it is to all but root.
  bool mountInChild() const;

  // Whether the child has mounted it.
  bool isMounted() const;

  // Takes questions until one comes from a thread of `process`; none of them is ever answered.
  // False when none has come within a minute.
  bool isAskedBy(pid_t process);

 private:
  int device_;
  std::string options_;  // written before the fork: the child may not allocate
};

}  // namespace tessaly
