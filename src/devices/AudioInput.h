#pragma once

#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "devices/AudioGain.h"
#include "devices/CAudioApiBase.h"

namespace Audio {

struct CInput : CAudioApiBase {
  struct CPowersupply;
  struct CDetection;
  struct CHalfduplex;
  struct CGain;
  struct CLoopback;
};

/** The sound driver, told by messages that it does not answer. */
[[nodiscard]] constexpr Peer driver(GpioCommand kind) {
  return {.tell = m_writeDriver, .id = static_cast<uint32_t>(kind)};
}

/** The library goes first; then the driver hears of it. */
struct CInput::CHalfduplex : CAudioApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Words{"on", "off"},
      .place = audio_row::AUDIO_HALFDUPLEX,
      .act = act,
      .keeps = Keeps::WriteThrough,
      .shows = {.image = Image::User},
  };
};

struct CInput::CPowersupply : CAudioApiBase {
  struct CStatus;
};

struct CInput::CPowersupply::CStatus : CAudioApiBase {
  static constexpr Rule rule{
      .accepts = Words{Word{"on", 10}, Word{"off", 11}},
      .place = audio_row::AUDIO_INPUT_POWER_SUPPLY,
      .peer = driver(GpioCommand::PowerSupply),
      .keeps = Keeps::WriteThrough,
      .shows = {.image = Image::User},
  };
};

/** "auto", or a number, which is kept as the step that it is put to. */
struct CInput::CGain : CAudioApiBase {
  static int32_t check(Request& request);
  static constexpr Rule rule{
      .accepts = Test{check, {"auto, or a number, which is put to a step of the amplifier", "auto 20", "x"}},
      .place = audio_row::AUDIO_MIC_GAIN,
      .peer = driver(GpioCommand::MicGain),
      .keeps = Keeps::WriteThrough,
      .shows = {.image = Image::User},
  };
};

/** Off at each start. */
struct CInput::CLoopback : CAudioApiBase {
  static inline std::string state = "off";
  static constexpr Rule rule{
      .accepts = Words{Word{"on", 15}, Word{"off", 14}},
      .place = &state,
      .peer = driver(GpioCommand::Loopback),
      .keeps = Keeps::InMemory,
  };
};

// ---- The detection of sound on a channel ---------------------------------------------------------------------------

struct CInput::CDetection : CAudioApiBase {
  static constexpr size_t kLayer = 2;
  static constexpr Selector selector{.empty = status::kCommandNotFound, .takes = SelectorNumber{.low = 1, .high = 2}};
  struct CStatus;
  struct CLevel;
  struct CTemporal;
};

/** What the second channel adds to a kind of the detection daemon's. */
[[nodiscard]] uint32_t ofChannel(const Selectors& selectors);

constexpr Rule detectionItem(const Accepts& accepts, aud_detect_row::Row row, uint32_t kind, Image shown) {
  return {
      .accepts = accepts,
      .place = {row, tableOf<CInput::CDetection::kLayer, 1>},
      .peer = {.tell = m_sendDetectdata, .id = kind, .ofPath = ofChannel},
      .keeps = Keeps::WriteThrough,
      .shows = {.image = shown},
  };
}

struct CInput::CDetection::CStatus : CAudioApiBase {
  static constexpr Rule rule = detectionItem(Words{"off", "on"}, aud_detect_row::AUD_DETECT_STATUS, 33, Image::User);
};

struct CInput::CDetection::CLevel : CAudioApiBase {
  static constexpr Rule rule =
      detectionItem(Number{.low = 0, .high = 100}, aud_detect_row::AUD_DETECT_LEVEL, 34, Image::Config);
};

struct CInput::CDetection::CTemporal : CAudioApiBase {
  static constexpr Rule rule =
      detectionItem(Number{.low = 0, .high = 3000}, aud_detect_row::AUD_DETECT_TEMPORAL, 35, Image::Config);
};

}  // namespace Audio
