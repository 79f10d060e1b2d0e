#include "EncoderChannel.h"

namespace sim {

namespace {

constexpr int formatOff = 0;
constexpr int formatJpeg = 2;

/** A jpeg channel has a picture size where the others have a rate and an interval. */
const std::vector<const char*> jpegSettings{"format", "width", "height", "framerate", "cbr_mode", "filesize"};
const std::vector<const char*> streamSettings{"format",   "width",   "height",    "framerate",
                                              "cbr_mode", "bitrate", "i_interval"};

}  // namespace

void EncoderChannel::set(std::string_view what, const EncoderValues& values) {
  for (const auto& [name, value] : values)
    m_settings[name == "value" ? std::string(what) : name] = value;
}

EncoderValues EncoderChannel::settings() const {
  const auto format = m_settings.find("format");
  if (format == m_settings.end() || format->second == formatOff) return {};
  EncoderValues values;
  for (const char* name : format->second == formatJpeg ? jpegSettings : streamSettings) {
    const auto setting = m_settings.find(name);
    if (setting != m_settings.end()) values.push_back(*setting);
  }
  return values;
}

}  // namespace sim
