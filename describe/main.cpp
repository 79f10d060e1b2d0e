// Prints the description of the tree as JSON, or writes it to the file of the argument. Exit status 1 where a parameter
// lacks its text, or the file cannot be written.

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

#include "describe/Describe.h"

int main(int argc, char** argv) {
  try {
    const std::string text = describe::tree().dump(1) + "\n";
    if (argc < 2) {
      std::cout << text << std::flush;
      return std::cout ? 0 : 1;
    }
    std::ofstream file(argv[1]);
    file << text << std::flush;
    return file ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "tmx-describe: %s\n", failure.what());
    return 1;
  }
}
