#include <cstdio>
#include <string_view>

#include "cli/Commands.h"
#include "cli/Options.h"

namespace {

constexpr const char* kUsage =
    R"(tmxctl reads and changes the parameters of the camera.

Usage:
  tmxctl [OPTION…] PATH…                  read
  tmxctl [OPTION…] PATH=VALUE…            write
  tmxctl [OPTION…] COMMAND [ARGUMENT…]

Commands:
  get PATH…         read parameters
  set PATH=VALUE…   write parameters; an empty VALUE is sent as "%00"
  list [PATH]       permissions and paths of all parameters, or of those below PATH
  tree [PATH]       the same as a tree
  show PATH…        what a parameter is and takes, when it is in force, and who may read and write it;
                    with --as also whether that class may here and now, and why not
  dump [PATH]       all settings as lines PATH=VALUE
  load FILE         write the lines of a dump, the encoders' first, and count them; FILE is "-" for standard input
  diff FILE [FILE]  what differs between a dump and the camera, or another dump
  watch PATH…       read again and again, print what changes; ends on Ctrl-C

Options:
  --as CLASS           admin (default), operator, user, onvif or debug
  -c, --commit         when all writes were accepted, run the commits that they wait for, restarts last
      --dry-run        load writes nothing; it tells for each line whether it would change something, and
                       whether the camera takes it
  -i, --interval SEC   time between two reads of watch (default 1)
  --json               answers as JSON
  -q, --quiet          values only; refusals go to standard error
  -r, --raw            values stay as they travel: "%22", "%25" and "%26" are not translated
  -s, --socket SOCKET  default $TMX_SOCKET, else /tmp/request
  -t, --timeout SEC    time for one request (default 30)
  -h, --help           this text
  -V, --version        the version

Several items go to the camera as one request, as far as it takes them (15 items, 1024 bytes).
Put a path with a selector in quotes: tmxctl 'network.destination(2).host'

Exit status: 0 all items were answered by 200 or 202; 1 the camera refused something;
2 wrong usage; 3 no connection, or no answer in time.
)";

struct Command {
  std::string_view name;
  int (*run)(const tmx::Session&, const tmx::Arguments&);
};

constexpr Command kCommands[] = {
    {"get", tmx::runGet},     {"set", tmx::runSet},           {"list", tmx::runList}, {"tree", tmx::runTree},
    {"show", tmx::runShow},   {"dump", tmx::runDump},         {"load", tmx::runLoad}, {"diff", tmx::runDiff},
    {"watch", tmx::runWatch}, {"complete", tmx::runComplete},
};

}  // namespace

int main(int argc, char** argv) {
  tmx::Options options;
  if (!tmx::parseOptions(argc, argv, options)) return tmx::usageError("the command line cannot be understood");
  if (options.wantsHelp) {
    std::fputs(kUsage, stdout);
    return tmx::kExitOk;
  }
  if (options.wantsVersion) {
    std::printf("tmxctl %s\n", TMX_VERSION);
    return tmx::kExitOk;
  }
  if (options.arguments.empty()) return tmx::usageError("nothing to do");

  const tmx::Session session(options);
  for (const Command& command : kCommands) {
    if (options.arguments.front() == command.name)
      return command.run(session, {options.arguments.begin() + 1, options.arguments.end()});
  }
  return tmx::runItems(session, options.arguments);
}
