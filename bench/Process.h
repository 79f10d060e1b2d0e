#pragma once

#include <sys/types.h>

namespace bench {

/** The kibibytes of a process. */
struct Memory {
  long resident = 0;
  long privateDirty = 0;
};

/** Seconds of processor time since the process's start, of all its threads that still run; 0 when it is not there. */
[[nodiscard]] double processorTimeOf(pid_t pid);

/** All zeros when the process is not there. */
[[nodiscard]] Memory memoryOf(pid_t pid);

}  // namespace bench
