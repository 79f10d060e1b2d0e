#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "camera/CCameraApiBase.h"
#include "tree/Leaf.h"

/** The language of the PTZ sequencer: the parameters' own texts. Results: 0, or -500 when it did not answer. */
namespace sequencer {

/** Writes, "path=value" or the like; what is answered tells nothing. */
[[nodiscard]] int32_t tell(const std::string& request);
/** Reads: the answer is the bare value. */
[[nodiscard]] int32_t ask(std::string_view path, std::string& value);

}  // namespace sequencer

namespace Camera {

/** A leaf whose accepted values go to the sequencer, under the path that `Derived` states; an emptied one does not. */
template <class Derived>
class Tells : public Leaf<Derived, CCameraApiBase> {
 public:
  using Leaf<Derived, CCameraApiBase>::Leaf;
  int32_t act(Request& request) {
    return request.value.empty() ? 0 : sequencer::tell(std::string(Derived::path) + "=" + request.value);
  }
};

/** The same, and a read asks the sequencer. */
template <class Derived>
class Relays : public Tells<Derived> {
 public:
  using Tells<Derived>::Tells;
  int32_t fetch(const Request& /*request*/, std::string& text) { return sequencer::ask(Derived::path, text); }
};

}  // namespace Camera
