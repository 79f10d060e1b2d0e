#include "camera/Image.h"

#include "config/Config.h"

namespace Camera {

int32_t CImage::CWhiteBalance::CArea::fetch(const Request& /*request*/, std::string& text) {
  const CUserConfig& user = *CUserConfig::getInstance();
  text = user.get(camera_row::WBAREAH1);
  for (const camera_row::Row row : {camera_row::WBAREAV1, camera_row::WBAREAH2, camera_row::WBAREAV2})
    text += "-" + user.get(row);
  return 0;
}

}  // namespace Camera
