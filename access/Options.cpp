#include "access/Options.h"

#include <getopt.h>

#include <vector>

namespace tmx {

int takeOptions(int argc, char** argv, std::initializer_list<TextOption> options) {
  std::vector<option> known;
  for (const TextOption& option : options)
    known.push_back({option.name, required_argument, nullptr, 0});
  known.push_back({});
  int index = 0;
  int found = 0;
  while ((found = getopt_long(argc, argv, "", known.data(), &index)) == 0)
    options.begin()[index].text = optarg;
  return found == -1 ? optind : -1;
}

}  // namespace tmx
