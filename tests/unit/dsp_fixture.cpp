#include "tests/unit/dsp_fixture.h"

#include <algorithm>
#include <cstdio>

#include "platform/zr_com.h"

std::function<int(unsigned char* frame)> fakeDspRead;

int zr_get_va_data(unsigned char* frame) { return fakeDspRead(frame); }

int zr_set_camera_id(const char* id) {
  std::string call = "id";
  for (; *id != '\0'; ++id) {
    char byte[4];
    std::snprintf(byte, sizeof byte, " %02x", static_cast<unsigned>(static_cast<unsigned char>(*id)));
    call += byte;
  }
  fakeCameraLibrary.calls.push_back(call);
  return std::ranges::count(fakeCameraLibrary.failing, "id") > 0 ? -1 : 0;
}

DspTest::DspTest() {
  fakeCameraLibrary = {};
  useBoard(0);
#define TMX_RESET_CAMERA(key, value) setText(camera_row::key, value);
  TMX_ROWS_CAMERA(TMX_RESET_CAMERA)
#undef TMX_RESET_CAMERA
  const std::pair<int32_t, const char*> scene[] = {
      {camera_row::PRIVACY_MASK_COLOR, "1234FF"},
      {camera_row::PRIVACY_MASK_AREA, "FF8"},
      {camera_row::COMMENT, "gate"},
      {camera_row::WBAREAH1, "1"},
      {camera_row::WBAREAV1, "2"},
      {camera_row::WBAREAH2, "1918"},
      {camera_row::WBAREAV2, "1078"},
      {camera_row::COLOR, "50"},
      {camera_row::SHUTTER, "auto"},
      {camera_row::EASY_DAY_NIGHT, "color"},
      {camera_row::ENHANCE, "50"},
      {camera_row::BRIGHTNESS, "autoM"},
      {camera_row::SENSEUP_LIMIT, "0"},
      {camera_row::AVPK_BW, "7"},
      {camera_row::WHITE_BALANCE, "autoW"},
      {camera_row::WB_R_GAIN, "84"},
      {camera_row::BLC, "off"},
      {camera_row::LUMX, "off"},
      {camera_row::AUTO_EXPOSURE_REFERENCE, "16"},
  };
  for (const auto& [row, value] : scene)
    setText(row, value);
#define TMX_RESET_ROW(key, value) CUserConfig::getInstance()->setScpServiceConfig(scp_service_row::key, value);
  TMX_ROWS_SCP_SERVICE(TMX_RESET_ROW)
#undef TMX_RESET_ROW
}

DspTest::~DspTest() { fakeCameraLibrary = {}; }

std::vector<std::string> DspTest::allTexts() {
  std::vector<std::string> texts;
  for (int32_t row = 0; row < camera_row::kCount; ++row)
    texts.push_back(text(row));
  return texts;
}

void DspTest::useBoard(uint8_t id) {
  fakeDspRead = [id](unsigned char* frame) {
    frame[3] = frame[0] == 0x1A ? id : 0;
    return 0;
  };
}

Frames DspTest::sentWithProbes() {
  Frames frames;
  for (std::string call : fakeCameraLibrary.calls) {
    if (call.starts_with("dsp ")) {
      EXPECT_EQ(call.size(), 4 + 12 * 3 - 1);
      call.erase(0, 4);
      while (call.size() > 2 && call.ends_with(" 00"))
        call.resize(call.size() - 3);
    }
    frames.push_back(call);
  }
  fakeCameraLibrary.calls.clear();
  return frames;
}

Frames DspTest::sent() {
  Frames frames = sentWithProbes();
  std::erase_if(frames, [](const std::string& frame) { return frame == "18 01" || frame == "19 20"; });
  return frames;
}
