#pragma once

#include <cstdint>
#include <string>

#include "system/CSystemApiBase.h"
#include "tree/Node.h"

namespace System {

/** Uptime and the events that the event manager logged, over many lines. */
struct CLog : CSystemApiBase {
  int32_t execRead(ExecArgs* args) override;
};

/** The highest priority that reaches the system log, by name; not saved. A name that is no level is the default one. */
struct CLoglevel : CSystemApiBase {
  static int32_t check(Request& request);
  static int32_t act(Request& request);
  static inline std::string level = "LOG_INFO";
  static constexpr Rule rule{
      .accepts = Test{check,
                      {"LOG_EMERG to LOG_DEBUG; another text stands for LOG_INFO",
                       "LOG_EMERG LOG_ALERT LOG_CRIT LOG_ERR LOG_WARNING LOG_NOTICE LOG_DEBUG LOG_INFO", ""}},
      .place = &level,
      .act = act,
      .keeps = Keeps::InMemory};
};

}  // namespace System
