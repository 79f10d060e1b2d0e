#pragma once

#include <cstdint>
#include <string>

#include "camera/Area.h"
#include "camera/CCameraApiBase.h"
#include "camera/Counter.h"

/** What belongs to the picture of the camera and to no scene. */
namespace Camera {

struct CImage : CCameraApiBase {
  struct CTrueDaynight;
  struct CWhiteBalance;
};

struct CImage::CTrueDaynight : CCameraApiBase {
  struct CIrCounter;
  struct CLedCounter;
};

/** How often the cut filter has moved. */
struct CImage::CTrueDaynight::CIrCounter : CCameraApiBase {
  static constexpr Rule rule = counterRule<gpio::Counter::Filter>();
};

struct CImage::CTrueDaynight::CLedCounter : CCameraApiBase {
  static constexpr Rule rule = counterRule<gpio::Counter::Lamp>(status::kNotValidForResource);
};

struct CImage::CWhiteBalance : CCameraApiBase {
  struct CArea;
};

/** The part of the picture that the white balance looks at. */
struct CImage::CWhiteBalance::CArea : CCameraApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Text{.form = kAreaForm},
      .act = areaToDsp<&CameraDSP::setWBArea>,
      .fetch = fetch,
      .answers = kSaveCamera,
  };
};

}  // namespace Camera
