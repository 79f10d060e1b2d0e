#include "tests/unit/fake_camera_library.h"

#include <cstdio>
#include <initializer_list>

#include "platform/zr_com.h"

FakeCameraLibrary fakeCameraLibrary;

namespace {

int called(const std::string& call) {
  fakeCameraLibrary.calls.push_back(call);
  for (const std::string& start : fakeCameraLibrary.failing) {
    if (call.starts_with(start)) return -1;
  }
  return 0;
}

int called(const char* name, std::initializer_list<int> numbers) {
  std::string call = name;
  for (const int number : numbers)
    call += " " + std::to_string(number);
  return called(call);
}

}  // namespace

int zr_set_va_data(unsigned char* frame) {
  std::string call = "dsp";
  for (int i = 0; i < 12; ++i) {
    char byte[4];
    std::snprintf(byte, sizeof byte, " %02x", static_cast<unsigned>(frame[i]));
    call += byte;
  }
  return called(call);
}

int zr_set_video_enc_format(int channel, int format) { return called("format", {channel, format}); }
int zr_set_video_resolution(int channel, int width, int height) { return called("size", {channel, width, height}); }
int zr_set_video_framerate(int channel, int fps) { return called("rate", {channel, fps}); }
int zr_set_video_cbr_mode(int channel, int mode) { return called("cbr", {channel, mode}); }
int zr_set_video_bitrate(int channel, int kbps) { return called("kbps", {channel, kbps}); }
int zr_set_video_filesize(int channel, int quality) { return called("quality", {channel, quality}); }
int zr_set_video_i_interval(int channel, int interval) { return called("interval", {channel, interval}); }
int zr_set_video_encoder_ctl(int channel, int action) { return called("ctl", {channel, action}); }
