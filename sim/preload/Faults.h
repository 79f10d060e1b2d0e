#pragma once

#include <cstddef>

namespace sim {

/** What a file operation changes, as far as faults tell them apart: content, a name, or neither (open, sync). */
enum class Operation { Write, Name, Other };

/** What a write brings. */
struct Bytes {
  const void* data = nullptr;
  std::size_t size = 0;
};

/**
 * Counts a file operation and decides whether it may go on. Only paths on flash count, in the form that they have
 * behind all symbolic links, and only while the fault page is armed.
 *
 * @return true when the operation has to fail, with errno set. Does not return when the power goes instead.
 */
[[nodiscard]] bool denied(Operation operation, const char* path);
[[nodiscard]] bool denied(Operation operation, int directory, const char* path);
[[nodiscard]] bool denied(Operation operation, int descriptor, Bytes bytes = {});
/** The same for a rename, which counts where the new name is and changes both. */
[[nodiscard]] bool renameDenied(int fromFolder, const char* from, int toFolder, const char* to);

/** A file was synced. */
void noteSync(int descriptor);
/** Everything was; the calls are counted. */
void noteSync();
/** Adds up sleeps. */
void countWait(unsigned microseconds);

}  // namespace sim
