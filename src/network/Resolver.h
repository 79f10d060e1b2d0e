#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "tree/Rule.h"

/** The resolver's file and the rows from which it is made. */
namespace resolver {

/** The domains that a name is looked for in, in their order. */
inline constexpr std::array<network_row::Row, 4> kDomains{network_row::DOMAINNAME, network_row::DOMAINNAME2,
                                                          network_row::DOMAINNAME3, network_row::DOMAINNAME4};

/** Rule::fetch of the first server in the file. */
[[nodiscard]] int32_t fetchServer(const Request& request, std::string& text);

/** Takes the staged rows over and makes the file anew, unless it is the address client's; 0, kNothingWaits or -500. */
[[nodiscard]] int32_t restart(Request& request);

}  // namespace resolver
