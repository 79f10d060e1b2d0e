#pragma once

#include <string>
#include <vector>

namespace bench {

/** File operations under the camera's flash since its page of faults was told to count. */
struct FileCounts {
  bool isKnown = false;
  unsigned operations = 0;  ///< that change something, of all programs: truncating, writing, renaming …
  unsigned syncs = 0;       ///< of everything
  unsigned waited = 0;      ///< milliseconds that were slept on purpose
};

/** One start of the daemon. */
struct Start {
  bool isDone = false;
  double wall = 0;       ///< seconds from the process's first moment to its first answer
  double processor = 0;  ///< seconds of processor time by then, of all its threads
  FileCounts counts;
};

/** The simulated camera that is measured. One that was booted for the measurement is removed with the object. */
class Camera {
 public:
  /** @param home the home of a camera that is up; empty boots one in a folder for temporary files. */
  explicit Camera(const std::string& home);
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;
  ~Camera();

  [[nodiscard]] bool isUp() const;
  [[nodiscard]] std::string path(const std::string& name) const { return m_home + "/" + name; }
  [[nodiscard]] std::string socket() const { return path("tmp/request"); }

  /** Restarts the camera and waits for its first answer. The counts include what the stop in front of it did. */
  [[nodiscard]] Start restart() const;

 private:
  /** Runs a command of the camera; its exit status, and what it prints when asked for. */
  int run(const std::string& command, const std::vector<std::string>& arguments, std::string* output = nullptr) const;
  [[nodiscard]] FileCounts counts() const;

  std::string m_home;
  bool m_isOwn;
};

/** The program of this name in the folder of the running one. */
[[nodiscard]] std::string programBeside(const std::string& name);

/** The bytes of the program without its symbols; -1 when that cannot be found out. */
[[nodiscard]] long strippedSize(const std::string& program);

}  // namespace bench
