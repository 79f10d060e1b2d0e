#pragma once

#include <map>
#include <optional>
#include <string>

#include "tests/camera/Camera.h"

namespace test {

/** The files of the partition and of the camera's own data beside it, by their path in the home. */
using Files = std::map<std::string, std::string>;

[[nodiscard]] Files filesOf(const Camera& camera);
/** Makes the files of a camera that is off these again. */
void putBack(const Camera& camera, const Files& files);
/** Without copies that did not get their name, and with what no two runs have in common (salts, dates) made the same.
 */
[[nodiscard]] Files comparable(Files files);
/** The paths of the files that differ. */
[[nodiscard]] Texts difference(const Files& left, const Files& right);

/** Whether the store keeps its rows in the file: only these are rewritten in place. */
[[nodiscard]] bool isOfStore(const std::string& path);

/** A run that a power cut ended. */
struct PowerCut {
  Files factory = {};
  Files before = {};
  Files after = {};          ///< of the same run without the cut
  bool isOldAllowed = true;  ///< not behind an answer, and not where it is the start's work to write
};

/**
 * What the rules of the store do not explain; this is the one judge of all cuts. A file is afterwards as before the run
 * or as behind it. A file of the store may have been cut short, because it is rewritten in place: then the next start
 * completes the lines that are whole with the built-in rows. It also brings a missing file back; where a file cannot be
 * understood, or the mark of a restore that was cut short is there, the whole partition.
 *
 * @param left the files behind the cut; none when the partition itself was being written
 * @param started the files behind the next start
 */
[[nodiscard]] Texts unexplained(const PowerCut& cut, const std::optional<Files>& left, const Files& started);

}  // namespace test
