#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/** The language of the PTZ sequencer: the parameters' own texts. Results: 0, or -500 when it did not answer. */
namespace sequencer {

/** Writes, "path=value" or the like; what is answered tells nothing. */
[[nodiscard]] int32_t tell(const std::string& request);
/** Reads: the answer is the bare value; one of several lines, which would forge a line of the response, is none. */
[[nodiscard]] int32_t ask(std::string_view path, std::string& value);

}  // namespace sequencer
