// The C interface is all that the library shows.
#pragma GCC visibility push(default)
#include "platform/zr_com.h"
#pragma GCC visibility pop

#include <algorithm>
#include <array>
#include <cerrno>
#include <mutex>
#include <string>
#include <utility>

#include "Dsp.h"
#include "EncoderChannel.h"
#include "Orders.h"
#include "sim/common/DspFrames.h"
#include "sim/common/Journal.h"

/*
 * Stand-in for the closed camera library. Every call goes to the journal: frames as "dsp", encoder calls as "encoder",
 * the others as "library"; the start of an encoder tells what it runs with. A call that was told to fail, or that names
 * a channel that does not exist, gives -1 with errno and changes nothing.
 */
namespace {

constexpr int encoderChannels = 3;
/** The action of zr_set_video_encoder_ctl that starts a channel. */
constexpr int encoderStart = 2;
/** The line that carries the position of the video format switch. */
constexpr int videoSwitchGpio = 1;

struct Library {
  std::mutex lock;
  sim::Orders orders;
  sim::Dsp dsp{orders};
  std::array<sim::EncoderChannel, encoderChannels> encoders;
};

Library& library() {
  static Library instance;
  return instance;
}

int failure(int reason) {
  errno = reason;
  return -1;
}

int conclude(sim::Journal& line, bool failed, int reason = EIO) {
  if (failed) line.number("result", -1);
  line.write();
  return failed ? failure(reason) : 0;
}

void appendFrame(sim::Journal& line, const sim::DspFrame& frame) {
  line.text("addr", sim::hexNumber(frame[0])).text("name", sim::dspName(frame[0]));
  for (const sim::DspValue& field : sim::dspValues(frame))
    line.number(field.name, field.value);
  line.raw(frame.data(), frame.size());
}

bool frameFails(Library& camera, const std::string& function, std::uint8_t address) {
  const std::string name = sim::hexNumber(address);
  return camera.orders.fails({function, function + ":" + name, name});
}

void appendNumbers(sim::Journal& line, const sim::EncoderValues& numbers) {
  for (const auto& [name, value] : numbers)
    line.number(name, value);
}

int encoderCall(const std::string& function, const char* what, int channel, const sim::EncoderValues& numbers,
                bool isStart = false) {
  Library& camera = library();
  const std::scoped_lock guard(camera.lock);
  camera.orders.refresh();
  sim::Journal line("encoder", what);
  line.number("channel", channel);
  appendNumbers(line, numbers);
  if (channel < 0 || channel >= encoderChannels) return conclude(line, true, EINVAL);
  if (camera.orders.fails({function, function + ":" + std::to_string(channel)})) return conclude(line, true);
  sim::EncoderChannel& encoder = camera.encoders.at(static_cast<std::size_t>(channel));
  encoder.set(what, numbers);
  if (isStart) appendNumbers(line, encoder.settings());
  return conclude(line, false);
}

int libraryCall(const std::string& function, sim::Journal line) {
  Library& camera = library();
  const std::scoped_lock guard(camera.lock);
  camera.orders.refresh();
  return conclude(line, camera.orders.fails({function}));
}

int numberCall(const std::string& function, const char* what, int value) {
  return libraryCall(function, sim::Journal("library", what).number("value", value));
}

int textCall(const std::string& function, const char* what, const char* text) {
  return text == nullptr ? failure(EFAULT) : libraryCall(function, sim::Journal("library", what).text("value", text));
}

}  // namespace

int zr_set_va_data(unsigned char* frame) {
  if (frame == nullptr) return failure(EFAULT);
  Library& camera = library();
  const std::scoped_lock guard(camera.lock);
  camera.orders.refresh();
  sim::DspFrame sent{};
  std::copy_n(frame, sent.size(), sent.begin());
  sim::Journal line("dsp", "set");
  appendFrame(line, sent);
  const bool failed = frameFails(camera, "zr_set_va_data", sent[0]);
  if (!failed) camera.dsp.set(sent);
  return conclude(line, failed);
}

int zr_get_va_data(unsigned char* frame) {
  if (frame == nullptr) return failure(EFAULT);
  Library& camera = library();
  const std::scoped_lock guard(camera.lock);
  camera.orders.refresh();
  sim::Journal line("dsp", "get");
  if (frameFails(camera, "zr_get_va_data", frame[0])) {
    line.text("addr", sim::hexNumber(frame[0])).text("name", sim::dspName(frame[0]));
    return conclude(line, true);
  }
  const sim::DspFrame answer = camera.dsp.get(frame[0]);
  std::ranges::copy(answer, frame);
  appendFrame(line, answer);
  return conclude(line, false);
}

int zr_set_camera_id(const char* id) { return textCall("zr_set_camera_id", "camera_id", id); }

int zr_set_video_enc_format(int channel, int format) {
  return encoderCall("zr_set_video_enc_format", "format", channel, {{"value", format}});
}

int zr_set_video_resolution(int channel, int width, int height) {
  return encoderCall("zr_set_video_resolution", "resolution", channel, {{"width", width}, {"height", height}});
}

int zr_set_video_framerate(int channel, int fps) {
  return encoderCall("zr_set_video_framerate", "framerate", channel, {{"value", fps}});
}

int zr_set_video_cbr_mode(int channel, int mode) {
  return encoderCall("zr_set_video_cbr_mode", "cbr_mode", channel, {{"value", mode}});
}

int zr_set_video_bitrate(int channel, int kbps) {
  return encoderCall("zr_set_video_bitrate", "bitrate", channel, {{"value", kbps}});
}

int zr_set_video_filesize(int channel, int quality) {
  return encoderCall("zr_set_video_filesize", "filesize", channel, {{"value", quality}});
}

int zr_set_video_i_interval(int channel, int interval) {
  return encoderCall("zr_set_video_i_interval", "i_interval", channel, {{"value", interval}});
}

int zr_set_video_encoder_ctl(int channel, int action) {
  return encoderCall("zr_set_video_encoder_ctl", "ctl", channel, {{"value", action}}, action == encoderStart);
}

int zr_set_video_analog_out(int mode) { return numberCall("zr_set_video_analog_out", "analog_out", mode); }

int zr_set_audio_play(int clip) { return numberCall("zr_set_audio_play", "audio_play", clip); }

int zr_set_audio_duplex(int mode) { return numberCall("zr_set_audio_duplex", "audio_duplex", mode); }

int zr_set_timezone(const char* name) { return textCall("zr_set_timezone", "timezone", name); }

int zr_get_gpio(int id, unsigned char* value, unsigned char* other, int flag) {
  if (value == nullptr || other == nullptr) return failure(EFAULT);
  Library& camera = library();
  const std::scoped_lock guard(camera.lock);
  camera.orders.refresh();
  sim::Journal line("library", "get_gpio");
  line.number("id", id).number("flag", flag);
  if (camera.orders.fails({"zr_get_gpio"})) return conclude(line, true);
  const int level = id == videoSwitchGpio ? camera.orders.number("video_switch", 0) : 0;
  *value = static_cast<unsigned char>(level);
  *other = 0;
  line.number("value", level);
  return conclude(line, false);
}
