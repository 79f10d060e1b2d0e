#pragma once

#include <cstdint>
#include <string>

#include "service/ParamPitcherDetection.h"

/**
 * The settings of motion and tamper detection: hands them to the detection daemon and keeps them in the camera table of
 * the working copy. Whoever needs one builds it; it keeps no state.
 *
 * Results: 0 (setAspectTamp: 200) when the daemon took the value, -500 when it could not be reached or refused, other
 * negative numbers for a value without a meaning. Failures are logged.
 */
class DetectionSet {
 public:
  explicit DetectionSet(ParamPitcherDetection daemon = ParamPitcherDetection());

  // Settings: sent, and kept once the daemon took them. A status is 1 or 0, -1 for another; an area is -2 when its
  // first character is no hexadecimal digit.
  [[nodiscard]] int32_t setStatus(int32_t status) const;
  [[nodiscard]] int32_t setLevel(int32_t level) const;
  [[nodiscard]] int32_t setArea(const std::string& area) const;
  [[nodiscard]] int32_t setStatusTamp(int32_t status) const;
  [[nodiscard]] int32_t setLevelTamp(int32_t level) const;
  [[nodiscard]] int32_t setTemporalTamp(int32_t seconds) const;

  /** Has motion reported for somebody who listens besides: sent, and not kept. 200, or -500. */
  [[nodiscard]] int32_t reportMotion() const;

  // What else changes the picture; tamper detection must not take that for tampering. Sent, and kept elsewhere. Without
  // sendflag nothing is sent and the result is 0. An aspect (Encoder's states) is -457 when it is not 0 or 1.
  [[nodiscard]] int32_t setAspectTamp(int32_t aspect, bool sendflag) const;
  [[nodiscard]] int32_t setAgcmodeTamp(const std::string& brightness, bool sendflag) const;
  [[nodiscard]] int32_t setBlctypeTamp(const std::string& type, bool sendflag) const;
  [[nodiscard]] int32_t setSenseUpLimitTamp(const std::string& limit, bool sendflag) const;
  [[nodiscard]] int32_t setAutoExposurereferenceTamp(const std::string& reference, bool sendflag) const;
  [[nodiscard]] int32_t setBlcAreaTamp(const std::string& area, bool sendflag) const;

  // The working copy. A row is one of DETECT_STATUS to TAMP_DETECT_TEMPO: for another the text is empty, the result -1.
  [[nodiscard]] static int32_t getStatus();
  [[nodiscard]] static int32_t getStatusTamp();
  [[nodiscard]] static int32_t getLevel();
  [[nodiscard]] static int32_t getLevelTamp();
  [[nodiscard]] static int32_t getTemporalTamp();
  [[nodiscard]] static std::string getArea();
  [[nodiscard]] static std::string getByRow(int32_t row);
  /** Sends nothing. */
  [[nodiscard]] static int32_t setByRow(int32_t row, const std::string& text);

  // All of the working copy to the daemon anew. A value that fails holds up none of the others; the result is that of
  // the first failure, or 0.
  [[nodiscard]] int32_t motionResend() const;
  [[nodiscard]] int32_t tamperResend() const;

 private:
  /** The daemon's numbers for its values. */
  enum class Kind : int32_t {
    Status = 1,
    Level = 2,
    Area = 3,
    StatusTamp = 17,
    LevelTamp = 18,
    TemporalTamp = 19,
    AspectTamp = 26,
    AgcmodeTamp = 27,
    BlctypeTamp = 28,
    SenseUpLimitTamp = 29,
    AutoExposurereferenceTamp = 30,
    BlcAreaTamp = 31,
  };

  [[nodiscard]] int32_t sendAndKeep(Kind kind, const std::string& text, int32_t row) const;
  [[nodiscard]] int32_t sendPicture(Kind kind, const std::string& text, bool sendflag) const;

  ParamPitcherDetection m_daemon;
};
