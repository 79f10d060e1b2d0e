#pragma once

#include <sys/types.h>

#include "service/OnvifSettings.h"

/**
 * The ONVIF service and its files. Stateless, and the one piece of the network root that two threads use: it touches
 * neither the stores nor the flash lock.
 */
class OnvifWorker {
 public:
  /** The pid of the running service; below 1 when it does not run. */
  [[nodiscard]] static pid_t readPid();
  /** Brings the profile file of each channel up to its settings. */
  static void refreshProfiles(const OnvifSettings& settings);
  /** Starts the service as a child of this process, in the place of one that was left behind; its pid, or below 0. */
  [[nodiscard]] static pid_t start(const OnvifSettings& settings);
  /** Waits until the child has ended, and removes what it left. */
  static void waitForEnd(pid_t pid);
  /** Lets the detection daemon report motion. */
  static void tellDetection();
};
