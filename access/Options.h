#pragma once

#include <initializer_list>
#include <string>

namespace tmx {

/** "--NAME TEXT" of a command line, and where the text goes. */
struct TextOption {
  const char* name;
  std::string& text;
};

/** Takes the options of a command line; the place of the first word behind them, or -1 for what is no option. */
[[nodiscard]] int takeOptions(int argc, char** argv, std::initializer_list<TextOption> options);

}  // namespace tmx
