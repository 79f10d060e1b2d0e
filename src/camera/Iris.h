#pragma once

#include "camera/CCameraApiBase.h"

namespace Camera {

/** Closed, automatic or open, until something else moves it; no setting. */
struct CIris : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Text{.form = {"0, auto or 100", "auto 0 100", "x", status::kInvalidRange}},
      .act = toDsp<&CameraDSP::setIrisMode>,
      .refusals = {{{dsp::kOutOfRange, status::kInvalidRange}}},
  };
  struct CLenstype;
};

/** Which lens is fitted: each has service values of its own for the iris loop. */
struct CIris::CLenstype : CCameraApiBase {
  static constexpr Rule rule{
      .accepts = Text{.form = {"lens1, or lens2 where the model has it", "lens1", "x", status::kInvalidRange}},
      .place = camera_row::IRIS_LENSTYPE,
      .act = toDsp<&CameraDSP::setLensType>,
      .shows = {.image = Image::User},
      .answers = kSaveCamera,
      .refusals = {{{dsp::kOutOfRange, status::kInvalidRange}, {dsp::kNotUnderstood, status::kMethodNotAllowed}}},
  };
};

}  // namespace Camera
