#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sim/common/Json.h"

namespace sim {

/**
 * One line of the camera's journal: what reached the DSP, an encoder, a neighbour or a child program.
 *
 * Compose and write in one expression:
 *
 *     Journal("dsp", "set").text("addr", "0x21").raw(frame, 12).write();
 *
 * gives {"t":1700000000.123,"who":"dsp","what":"set","addr":"0x21","raw":"2101…"}, with the keys in the order in which
 * they were added. The line goes to the end of the file $CAMERA_JOURNAL (default /run/camera/journal.jsonl) by one
 * write, so lines of different processes never mix. A journal that cannot be opened loses the line and nothing else:
 * write() leaves errno as it was and reports no failure, since no part of the camera may depend on being watched.
 *
 * Nothing is kept between two lines, so an entry may be written behind a fork and from every thread.
 */
class Journal {
 public:
  /** @param who the part of the camera that was reached; @param what the operation. */
  Journal(std::string_view who, std::string_view what);

  Journal& text(std::string_view key, std::string_view value);
  Journal& number(std::string_view key, std::int64_t value);
  Journal& list(std::string_view key, const std::vector<std::string>& values);
  /** The bytes of a message in hexadecimal, under the key "raw". */
  Journal& raw(const void* data, std::size_t size);

  void write() const;

  /** The line as it would be written, without its line end. */
  [[nodiscard]] std::string line() const { return m_object.toString(); }

 private:
  JsonObject m_object;
};

/** Bytes in lower-case hexadecimal, two digits each. */
[[nodiscard]] std::string hexText(const void* data, std::size_t size);

/** "0x" and at least two lower-case hexadecimal digits, the form in which the journal shows addresses and ids. */
[[nodiscard]] std::string hexNumber(std::uint32_t number);

}  // namespace sim
