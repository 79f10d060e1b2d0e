#include "sim/factory/Settings.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include "src/config/Rows.h"

namespace sim {

namespace {

struct Row {
  std::string_view key;
  std::string_view value;
};
using Rows = std::vector<Row>;

/**
 * Where the camera leaves the factory with another value than the built-in one, which heals a file but which the
 * parameter of the row refuses. A scene's keys are those of the camera's working copy too.
 */
constexpr Row factoryValues[] = {
    {"HOSTNAME", "kt-a10-30"},
    {"DNS_IP", "192.168.0.1"},  // without a server each start removes the resolver's file, there or not
    {"DETECT_STATUS", "off"},
    {"DETECT_AREA", "0000000000000000000000000000000000"},
    {"TAMP_DETECT_STATUS", "off"},
    {"TAMP_DETECT_TEMPO", "5"},
    {"WBAREAH2", "1918"},
    {"WBAREAV2", "1078"},
    {"COMMENT2", "General"},  // the name of the scene in force
    {"SHUTTER", "auto"},
    {"EASY_DAY_NIGHT", "color"},
    {"BRIGHTNESS", "autoM"},
    {"WHITE_BALANCE", "autoW"},
    {"BLC", "off"},
    {"LUMX", "off"},
    {"ET_LUMX_GAIN", "1"},
    {"CBR_MODE", "vfs"},
    {"APPLICATION_FTP_HOST", "192.168.0.1"},
    {"APPLICATION_SMTP_HOST", "192.168.0.1"},
    {"APPLICATION_POP_HOST", "192.168.0.1"},
    {"APPLICATION_OBJECT_FRAMERATE", "5"},  // the encoder's, above which it cannot be
    {"EVENT_TRIGGER", "pin1=make"},
};

constexpr std::string_view factoryValue(std::string_view key, std::string_view builtIn) {
  const auto* const row = std::ranges::find(factoryValues, key, &Row::key);
  return row == std::end(factoryValues) ? builtIn : row->value;
}

#define FACTORY_ROW(key, value) Row{#key, factoryValue(#key, value)},
#define FACTORY_ROWS(family) \
  Rows { TMX_ROWS_##family(FACTORY_ROW) }

constexpr std::array<std::string_view, 8> sceneNames{"General",  "Traffic", "Day", "Night",
                                                     "Dvr_Save", "Wide_d",  "Blc", "Lumx"};

/** What differs between the encoder channels. */
struct Channel {
  std::string_view status, frameSize, quality;
};
constexpr std::array<Channel, 3> channels{
    {{"on", "1920x1080", "320"}, {"off", "1280x720", "180"}, {"off", "640x360", "80"}}};

constexpr int applications = 10;
constexpr int events = 10;
constexpr int positions = 20;
constexpr int patrolSteps = 20;
constexpr int audioDetectors = 2;

constexpr std::array<std::string_view, 18> features{
    "ALARM_IO", "DAY_NIGHT", "AUDIO",         "FOCUS_CTRL",  "BACK_FOCUS_MODEL", "LENS_MODEL",
    "VP_MODEL", "ONVIF",     "PSIA",          "SNMP",        "AMX_PROTOCOL",     "BRAND",
    "NY_MODEL", "SDCARD",    "MOTION_DETECT", "TAMP_DETECT", "LOCALIZATION",     "SERIAL_PASS"};

std::string text(const Rows& rows) {
  std::string lines;
  for (const Row& row : rows)
    lines.append(row.key).append("=").append(row.value).append("\n");
  return lines;
}

Rows scene(std::size_t number) {
  Rows rows = FACTORY_ROWS(SCENE);
  rows[scene_row::COMMENT2].value = sceneNames.at(number);
  return rows;
}

Rows encoder(std::size_t channel) {
  Rows rows = FACTORY_ROWS(ENCODE);
  rows[encode_row::ENC_STATUS].value = channels.at(channel).status;
  rows[encode_row::FRAME_SIZE].value = channels.at(channel).frameSize;
  rows[encode_row::QUALITY].value = channels.at(channel).quality;
  return rows;
}

/** A rule that is off; its filters, once they are on, hold all day. */
Rows event() {
  Rows rows = FACTORY_ROWS(EVENT);
  for (std::size_t day = event_row::FILTER_TIME1; day <= event_row::FILTER_TIME7; ++day)
    rows[day].value = "000000-240000";
  return rows;
}

/** Position 0 is the home position, which every camera has. */
Rows position(int number) {
  Rows rows = FACTORY_ROWS(POSITION);
  const bool home = number == 0;
  rows[position_row::POSITION_STATUS].value = home ? "registered" : "unregistered";
  rows[position_row::POSITION_TITLE].value = home ? "Home" : "";
  rows[position_row::POSITION_ZOOM].value = home ? "1.0" : "0";
  return rows;
}

std::string patrol() {
  std::string lines;
  for (int step = 0; step < patrolSteps; ++step) {
    const std::string number = std::to_string(step);
    lines.append("PATROL_POSITION_").append(number).append("=0\n");
    lines.append("PATROL_DURATION_").append(number).append("=0\n");
    lines.append("PATROL_SPEED_").append(number).append("=100.0\n");
  }
  return lines;
}

void writeFamilies(const Path& folder) {
  writeFactoryFile(folder / "camera.conf", text(FACTORY_ROWS(CAMERA)));
  writeFactoryFile(folder / "network.conf", text(FACTORY_ROWS(NETWORK)));
  writeFactoryFile(folder / "input_pin.conf", text(FACTORY_ROWS(INPUT_PIN)));
  writeFactoryFile(folder / "output_pin.conf", text(FACTORY_ROWS(OUTPUT_PIN)));
  writeFactoryFile(folder / "audio.conf", text(FACTORY_ROWS(AUDIO)));
  writeFactoryFile(folder / "video.conf", text(FACTORY_ROWS(VIDEO)));
  writeFactoryFile(folder / "scpservice.conf", text(FACTORY_ROWS(SCP_SERVICE)));
  writeFactoryFile(folder / "sdcard.conf", text(FACTORY_ROWS(SD_CARD)));
  writeFactoryFile(folder / "serial.conf", text(FACTORY_ROWS(SERIAL)));
  writeFactoryFile(folder / "ui.conf", text(FACTORY_ROWS(UI)));
  writeFactoryFile(folder / "patrol/0.conf", patrol());
  writeFactoryFile(folder / "config_version", "1.00.003\n");
}

void writeNumbered(const Path& folder, const char* format, int number, const Rows& rows) {
  std::array<char, 64> name{};
  std::snprintf(name.data(), name.size(), format, number);
  writeFactoryFile(folder / name.data(), text(rows));
}

}  // namespace

void writeFactoryFile(const Path& path, const std::string& content) {
  std::error_code error;
  std::filesystem::create_directories(path.parent_path(), error);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if ((file << content).flush()) return;
  std::fprintf(stderr, "camera-factory: cannot write %s\n", path.c_str());
  std::exit(1);
}

void writeSettings(const Path& factory, const Path& sysinfo) {
  const Path folder = factory / "sysconfig";
  writeFamilies(folder);
  for (int number = 0; number < applications; ++number) {
    writeNumbered(folder, "application/application%d.conf", number, FACTORY_ROWS(APPLICATION));
  }
  for (int number = 0; number < events; ++number) {
    writeNumbered(folder, "event/event%d.conf", number, event());
  }
  for (int number = 0; number < positions; ++number) {
    writeNumbered(folder, "position/%d.conf", number, position(number));
  }
  for (int number = 0; number < audioDetectors; ++number) {
    writeNumbered(folder, "aud_detect/aud_detect%d.conf", number, FACTORY_ROWS(AUD_DETECT));
  }
  for (std::size_t number = 0; number < sceneNames.size(); ++number) {
    writeNumbered(folder, "scene/%d.conf", static_cast<int>(number), scene(number));
  }
  for (std::size_t number = 0; number < channels.size(); ++number) {
    writeNumbered(folder, "encode/encode%d.conf", static_cast<int>(number), encoder(number));
  }
  writeFactoryFile(sysinfo / "system.conf", text(FACTORY_ROWS(SYSTEM)));
  writeFactoryFile(sysinfo / "kq40_autofocus.conf", text(FACTORY_ROWS(CAM_FOCUS)));
  writeFactoryFile(sysinfo / "kq40_camdsp.conf", text(FACTORY_ROWS(CAMDSP)));
}

bool writeFeatures(const Path& factory, const std::vector<std::string>& without) {
  std::string lines;
  for (const std::string_view feature : features) {
    const bool off = std::find(without.begin(), without.end(), feature) != without.end();
    lines.append(feature).append(off ? "=FALSE\n" : "=TRUE\n");
  }
  for (const std::string& feature : without) {
    if (std::find(features.begin(), features.end(), feature) != features.end()) continue;
    std::fprintf(stderr, "camera-factory: there is no feature \"%s\"\n", feature.c_str());
    return false;
  }
  writeFactoryFile(factory / "model.conf", lines);
  return true;
}

}  // namespace sim
