#pragma once

#include "camera/CCameraApiBase.h"
#include "dsp/Words.h"

/** The privacy mask. */
namespace Camera {

struct CPrivateMask : CCameraApiBase {
  struct CStatus;
  struct CColor;
  struct CArea;
};

struct CPrivateMask::CStatus : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = dsp::words::kOffOn,
      .place = camera_row::PRIVACY_MASK_STATUS,
      .act = toDsp<&CameraDSP::setPrivacymaskStatus>,
      .keeps = Keeps::Staged,
      .unchanged = Unchanged::AfterKeeping,
      .shows = {.image = Image::User},
      .answers = kSaveCamera,
  };
};

/** The rule of a look of the mask: the one that it has already is not sent again. */
constexpr Rule maskRule(camera_row::Row row, const Accepts& accepts, Act act) {
  return {
      .accepts = accepts,
      .place = row,
      .act = act,
      .unchanged = Unchanged::BeforeTest,
      .compares = Image::User,
      .shows = {.image = Image::User},
      .answers = kSaveCamera,
  };
}

/** Six hexadecimal digits, of which the DSP gets the first two: the mask is grey. */
struct CPrivateMask::CColor : CCameraApiBase {
  static constexpr Rule rule =
      maskRule(camera_row::PRIVACY_MASK_COLOR, Hex{.digits = 6}, toDsp<&CameraDSP::setPrivacymaskColor>);
};

/** A bit for each field of the picture, in hexadecimal digits. */
struct CPrivateMask::CArea : CCameraApiBase {
  static constexpr Text kDigits{
      .most = 510, .least = 510, .wrongLength = status::kInvalidRange, .form = {"510 hexadecimal digits"}};
  static constexpr Rule rule = maskRule(camera_row::PRIVACY_MASK_AREA, kDigits, toDsp<&CameraDSP::setPrivacymaskArea>);
};

}  // namespace Camera
