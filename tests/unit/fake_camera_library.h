#pragma once

#include <string>
#include <vector>

/**
 * Takes the place of the closed camera library in the unit tests: writes down every call as its name and its numbers
 * ("size 0 640 480"; "dsp" and the twelve bytes of a frame in hexadecimal) and refuses those that it is told to.
 */
struct FakeCameraLibrary {
  std::vector<std::string> calls;
  std::vector<std::string> failing;  ///< beginnings of the calls that return -1
};

extern FakeCameraLibrary fakeCameraLibrary;
