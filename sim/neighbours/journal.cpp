#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>

#include "sim/common/JournalText.h"
#include "sim/common/Json.h"

/*
 * camera-journal [-f] [--raw] FILE: the journal in words. With -f it goes on as the journal grows, also before its
 * first line and behind a journal that was begun anew.
 */
namespace {

constexpr useconds_t followInterval = 100'000;

struct Options {
  bool follow = false;
  bool raw = false;
  std::string file;
};

bool parse(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "-f") {
      options.follow = true;
    } else if (word == "--raw") {
      options.raw = true;
    } else if (word.starts_with('-') || !options.file.empty()) {
      return false;
    } else {
      options.file = word;
    }
  }
  return !options.file.empty();
}

void print(const std::string& line, const Options& options) {
  const auto members = sim::parseJsonObject(line);
  std::cout << (members ? sim::journalText(*members, options.raw) : line) << '\n';
}

/** Prints the whole lines behind the position and gives the position behind them, or -1 without a file. */
std::streamoff printFrom(std::streamoff position, const Options& options) {
  std::ifstream file(options.file, std::ios::ate);
  if (!file) return -1;
  if (file.tellg() < position) position = 0;
  file.seekg(position);
  for (std::string line; std::getline(file, line) && !file.eof();) {
    print(line, options);
    position += static_cast<std::streamoff>(line.size()) + 1;
  }
  std::cout.flush();
  return position;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  if (!parse(argc, argv, options)) {
    std::fputs("usage: camera-journal [-f] [--raw] FILE\n", stderr);
    return 2;
  }
  std::streamoff position = printFrom(0, options);
  if (position < 0 && !options.follow) {
    std::perror(options.file.c_str());
    return 1;
  }
  while (options.follow && std::cout) {
    ::usleep(followInterval);
    position = printFrom(std::max<std::streamoff>(position, 0), options);
  }
  return 0;
}
