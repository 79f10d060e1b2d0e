#pragma once

#include <string>
#include <vector>

#include "cli/Description.h"
#include "cli/Session.h"

namespace tmx {

/** What follows the command on the command line. */
using Arguments = std::vector<std::string>;

// Every command returns an exit status. Messages for people go to standard error, answers to standard output.

[[nodiscard]] int runGet(const Session& session, const Arguments& arguments);
[[nodiscard]] int runSet(const Session& session, const Arguments& arguments);
/** Reads and writes as the arguments stand: a "=" makes a write. */
[[nodiscard]] int runItems(const Session& session, const Arguments& arguments);

[[nodiscard]] int runTree(const Session& session, const Arguments& arguments);
[[nodiscard]] int runList(const Session& session, const Arguments& arguments);
[[nodiscard]] int runShow(const Session& session, const Arguments& arguments);

[[nodiscard]] int runDump(const Session& session, const Arguments& arguments);
[[nodiscard]] int runLoad(const Session& session, const Arguments& arguments);
[[nodiscard]] int runDiff(const Session& session, const Arguments& arguments);
/** Prints what a word of a command line can become, a line each, for the completions of shells. */
[[nodiscard]] int runComplete(const Session& session, const Arguments& arguments);
[[nodiscard]] int runWatch(const Session& session, const Arguments& arguments);

/** Says what is wrong with the command line. */
[[nodiscard]] int usageError(const std::string& message);

}  // namespace tmx
