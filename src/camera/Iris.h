#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

/** Closed, automatic or open, until something else moves it; no setting. */
struct CIris : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Text{},
      .act = toDsp<&CameraDSP::setIrisMode>,
      .refusals = {{{dsp::kOutOfRange, status::kInvalidRange}}},
  };
  struct CLenstype;
};

/** Which lens is fitted: each has service values of its own for the iris loop. */
struct CIris::CLenstype : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Text{},
      .place = camera_row::IRIS_LENSTYPE,
      .act = toDsp<&CameraDSP::setLensType>,
      .shows = {.image = Image::User},
      .answers = kSaveCamera,
      .refusals = {{{dsp::kOutOfRange, status::kInvalidRange}, {dsp::kNotUnderstood, status::kMethodNotAllowed}}},
  };
};

}  // namespace Camera
