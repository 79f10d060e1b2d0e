#pragma once

#include <cstdint>
#include <string>

#include "system/CSystemApiBase.h"
#include "tree/Leaf.h"

namespace System {

/** Uptime and the events that the event manager logged, over many lines. */
class CLog : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  int32_t execRead(ExecArgs* args) override;
};

/** The highest priority that reaches the system log, by name; not saved. */
class CLoglevel : public Leaf<CLoglevel, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t acceptAny(Request& request);
  static constexpr Rule rule{.accepts = Test{acceptAny}};
  int32_t fetch(const Request& request, std::string& text) const;
  int32_t act(Request& request);

 private:
  std::string m_level = "LOG_INFO";
};

}  // namespace System
