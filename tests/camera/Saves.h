#pragma once

#include <string>
#include <vector>

#include "tests/camera/Camera.h"

namespace test {

/** One kind of save, asked for as the debug user. Behind the request and the undoing one the files are as they were. */
struct Save {
  std::string name = {};
  std::string request = {};
  std::string undo = {};
  std::string world = {};  ///< shell lines inside that the request needs in front of it
  unsigned is = 0;
};

// What is special about a save.
inline constexpr unsigned kRestarts = 1;     ///< the camera restarts behind the answer
inline constexpr unsigned kHalfNoticed = 2;  ///< by its documents the answer is the same when a part of it has failed

/** Every kind of save: each family of the store, and each file that something else writes. */
[[nodiscard]] const std::vector<Save>& everySave();

inline void PrintTo(const Save& save, std::ostream* out) { *out << save.name; }

/** A state of the files in which a start has something to write. */
struct Start {
  std::string name = {};
  void (*damage)(const Camera& camera) = nullptr;
};

[[nodiscard]] const std::vector<Start>& everyStart();

inline void PrintTo(const Start& start, std::ostream* out) { *out << start.name; }

}  // namespace test
