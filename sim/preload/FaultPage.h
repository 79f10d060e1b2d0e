#pragma once

#include <atomic>
#include <cstdint>

namespace sim {

/** What happens to file operations on flash. */
enum class Fault : std::uint32_t {
  None,  ///< they go through
  Cut,   ///< the power goes instead of the chosen operation
  Fail,  ///< the chosen operation fails with the chosen errno
  Full,  ///< every write fails, as on a full flash
};

/**
 * The page that all programs in the camera share (/run/camera/fault, mapped by the preloaded library): it counts the
 * file operations on flash (/mnt/flash, /mnt/sysinfo, /dev/mtd5) and says at which one what goes wrong. Whoever arms
 * it, from inside or outside, writes the fields and then `armed`. A page of zeros does nothing and counts nothing.
 */
struct FaultPage {
  std::atomic<std::uint32_t> armed;       ///< 1: operations are counted and the fault is in force
  std::atomic<std::uint32_t> operations;  ///< how many were begun since the page was armed
  std::atomic<std::uint32_t> writes;      ///< those of them that write
  std::atomic<std::uint32_t> syncs;       ///< calls of sync(), which are not among them
  std::atomic<std::uint32_t> waited;      ///< milliseconds that were slept on purpose
  std::atomic<Fault> fault;
  std::atomic<std::uint32_t> at;      ///< the chosen operation, from 1
  std::atomic<std::uint32_t> halves;  ///< 1: `at` counts the writes, and half of the bytes get to flash
  std::atomic<std::uint32_t> loses;   ///< 1: what was not synced goes with the power (Unsynced.h)
  std::atomic<std::int32_t> error;    ///< its errno
  std::atomic<std::uint32_t> dark;    ///< 1: the power is gone, nothing may touch a file any more
};

static_assert(std::atomic<Fault>::is_always_lock_free && std::atomic<std::uint32_t>::is_always_lock_free);

}  // namespace sim
