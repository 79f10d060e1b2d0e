#pragma once

#include <cstdint>
#include <span>
#include <string>

/** The two ladders of recording rates: that of cameras with 30 frames a second, and that of cameras with 25. */
enum class RateLadder { Frames30, Frames25 };

/** What the values of the `application` root must look like. Stateless; the reason of a refusal is logged. */
class ParamChecker {
 public:
  /** 0 for the address of a host, or a name of at most 63 characters; else -1. */
  [[nodiscard]] static int32_t checkHostName(const std::string& host);

  /** 0 for a sender's address of at most 96 characters with at most one "@"; it may have none. Else -1. */
  [[nodiscard]] static int32_t checkMailAddress(const std::string& address);

  /**
   * Puts a rate, "7.5" or a whole number of frames a second, -k for one frame every k seconds, to the next rate of the
   * ladder. 0, -451 for what is no rate, -457 for one that is out of range.
   */
  [[nodiscard]] static int32_t normaliseFrameRate(RateLadder ladder, const std::string& rate, std::string* normalised);

  /**
   * Looks for the form of an alarm clip at the head of a WAV file: PCM, one channel, 8000 samples a second of 16 bits.
   * 0 with the size of the sample data in bytes as the file states it, or -1.
   */
  [[nodiscard]] static int32_t checkFileHeader(std::span<const uint8_t> head, uint32_t* dataSize);
};
