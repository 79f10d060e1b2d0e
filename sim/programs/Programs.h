#pragma once

#include <string>
#include <vector>

namespace sim {

/** A stand-in's command line, with its name in front. */
using Arguments = std::vector<std::string>;

/** Writes down in the journal that the program was started and how. */
void noteStart(const Arguments& arguments);

/** The text of the option's value, "--name value" or "-n value"; empty without one. */
[[nodiscard]] std::string optionValue(const Arguments& arguments, const std::string& name);

/** The first line of /run/camera/NAME, or the given text without such a file. */
[[nodiscard]] std::string setting(const std::string& name, const std::string& usual);

void writeText(const std::string& path, const std::string& text);

/**
 * Puts in place what the address client's options ask for; an option of the lease that is empty is one that the server
 * does not give. False without a lease.
 */
[[nodiscard]] bool takeLease(const Arguments& arguments);

// Daemons. Each keeps its pid file while it lives and ends on SIGTERM.
int rtpd(const Arguments& arguments);
int rtspd(const Arguments& arguments);
int nvtApl(const Arguments& arguments);
int amxBeacond(const Arguments& arguments);
int pntpd(const Arguments& arguments);
int dhcpcd(const Arguments& arguments);
int count(const Arguments& arguments);
int upreset(const Arguments& arguments);
/** The parameter daemon itself, where it was built for another machine. */
int tmxd(const Arguments& arguments);

// Tools that run to their end.
int date(const Arguments& arguments);
int sdTest(const Arguments& arguments);
int macman(const Arguments& arguments);
int flashEraseall(const Arguments& arguments);
int mountFactory(const Arguments& arguments);

}  // namespace sim
