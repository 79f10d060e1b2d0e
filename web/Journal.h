#pragma once

#include <string>
#include <string_view>

#include "web/Response.h"

namespace console {

/** Whether this camera is a simulated one, which keeps a journal. */
[[nodiscard]] bool hasJournal();

/** {"next", "lines"}: at most 200 lines behind the place of an earlier "next", which the query names as "after=N". */
[[nodiscard]] Response journalBehind(std::string_view query);

}  // namespace console
