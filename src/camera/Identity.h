#pragma once

#include <cstdint>

#include "camera/CCameraApiBase.h"
#include "dsp/Words.h"

/** What the camera is called, and how it shows itself to who stands in front of it. */
namespace Camera {

/** The text that the DSP writes into the picture; it has a second path, `camera.comment`. */
struct CId : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Text{.most = 40, .escapes = Escapes::DecodedPlus, .canBeEmpty = true},
      .place = camera_row::COMMENT,
      .act = toDsp<&CameraDSP::setId>,
      .shows = {.image = Image::User, .escaped = true},
      .answers = kSaveCamera,
  };
};

/** Rule::peer: the recorder switches the camera's lamps. */
int32_t tellLamp(const Peer& peer, Request& request);

/** The rule of a way of showing itself, which the recorder hears of by its name. */
constexpr Rule lampRule(camera_row::Row row, std::string_view name) {
  return {
      .accepts = dsp::words::kOffOn,
      .place = row,
      .peer = {.tell = tellLamp, .path = name},
      .keeps = Keeps::Staged,
      .shows = {.image = Image::User},
      .answers = kSaveCamera,
  };
}

/** No lamp is lit. */
struct CStealth : CCameraApiBase {
  static constexpr Rule rule = lampRule(camera_row::STEALTH, "stealth");
};

/** The lamps show which camera it is. */
struct CIdentify : CCameraApiBase {
  static constexpr Rule rule = lampRule(camera_row::IDENTIFY, "identify");
};

}  // namespace Camera
