#pragma once

#include <optional>
#include <string>

#include "Words.h"

namespace sim {

/**
 * How a neighbour misbehaves, set by a control line of the form "FAULT [NUMBER] [for=MESSAGE]". With a message name the
 * fault concerns messages of that name alone, except "early", which comes before any message.
 */
struct Fault {
  enum class Kind {
    none,
    silent,   // takes the message and never answers
    cut,      // sends half of the answer and closes
    garbage,  // every byte of the answer is another than the right one
    refuse,   // the protocol's own refusal; the number means what the neighbour makes of it
    slow,     // answers after so many milliseconds
    early,    // closes a connection as soon as it is there
    leave,    // answers, and is gone for whoever comes next
    endless,  // answers, and goes on sending the same answer until the client has gone
    huge,     // every byte of the answer, a length's too, has all bits set, and more of them follow without end
    drip      // sends the answer byte by byte, each so many milliseconds behind the last, 1000 by itself
  };

  Kind kind = Kind::none;
  std::optional<int> number;
  std::string message;

  /** The kind of misbehaviour for a message of that name. */
  [[nodiscard]] Kind kindFor(const std::string& name) const {
    return message.empty() || message == name ? kind : Kind::none;
  }
};

/** The word by which a kind goes on the control socket and in the journal. */
[[nodiscard]] std::string faultName(Fault::Kind kind);

/** Whether a control line that begins with this word sets a fault. */
[[nodiscard]] bool isFaultName(const std::string& word);

/** The fault that the words ask for, or nothing when they are no such request. */
[[nodiscard]] std::optional<Fault> parseFault(const Words& words);

}  // namespace sim
