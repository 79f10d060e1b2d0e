#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "tree/Rule.h"

/** The four default gateways, of which 0.0.0.0 is none. */
namespace gateways {

inline constexpr std::array<network_row::Row, 4> kRows{network_row::GATEWAY_IPV4, network_row::GATEWAY_IPV4_2,
                                                       network_row::GATEWAY_IPV4_3, network_row::GATEWAY_IPV4_4};

/** Whether every staged gateway fits the address and its mask; if not, the text names what does not. */
[[nodiscard]] bool fit(const std::string& address, const std::string& mask, std::string& text);
/** The address and its mask, as the refusals name them. */
[[nodiscard]] std::string mismatch(const std::string& address, const std::string& mask);

/** Rule::fetch of the default route's gateway; 500 where the routes cannot be read. */
[[nodiscard]] int32_t fetchActive(const Request& request, std::string& text);

/**
 * Makes the staged gateways the active ones, in the routes and on flash. 0, -412 when one does not fit the active
 * address, which takes all of them back, or -500.
 */
[[nodiscard]] int32_t save(Request& request);

}  // namespace gateways
