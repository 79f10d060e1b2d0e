#pragma once

namespace sim {

/** What a file operation does, as far as faults tell them apart. */
enum class Operation { Write, Other };

/**
 * Counts a file operation and decides whether it may go on. Only paths under /mnt count, in the form that they have
 * behind all symbolic links, and only while the fault page is armed.
 *
 * @return true when the operation has to fail, with errno set. Does not return when the power goes instead.
 */
[[nodiscard]] bool denied(Operation operation, const char* path);
[[nodiscard]] bool denied(Operation operation, int directory, const char* path);
[[nodiscard]] bool denied(Operation operation, int descriptor);

/** Counts a call of sync(). */
void countSync();
/** Adds up sleeps. */
void countWait(unsigned microseconds);

}  // namespace sim
