#include "config/Families.h"

#include <array>
#include <cassert>
#include <limits>

#include "config/Rows.h"

namespace {

#define TMX_ROW_DEFAULT(key, value) RowDefault{#key, value},
constexpr RowDefault kCamdspRows[] = {TMX_ROWS_CAMDSP(TMX_ROW_DEFAULT)};
constexpr RowDefault kCameraRows[] = {TMX_ROWS_CAMERA(TMX_ROW_DEFAULT)};
constexpr RowDefault kNetworkRows[] = {TMX_ROWS_NETWORK(TMX_ROW_DEFAULT)};
constexpr RowDefault kSystemRows[] = {TMX_ROWS_SYSTEM(TMX_ROW_DEFAULT)};
constexpr RowDefault kApplicationRows[] = {TMX_ROWS_APPLICATION(TMX_ROW_DEFAULT)};
constexpr RowDefault kInputPinRows[] = {TMX_ROWS_INPUT_PIN(TMX_ROW_DEFAULT)};
constexpr RowDefault kOutputPinRows[] = {TMX_ROWS_OUTPUT_PIN(TMX_ROW_DEFAULT)};
constexpr RowDefault kAudioRows[] = {TMX_ROWS_AUDIO(TMX_ROW_DEFAULT)};
constexpr RowDefault kEventRows[] = {TMX_ROWS_EVENT(TMX_ROW_DEFAULT)};
constexpr RowDefault kPositionRows[] = {TMX_ROWS_POSITION(TMX_ROW_DEFAULT)};
constexpr RowDefault kEncodeRows[] = {TMX_ROWS_ENCODE(TMX_ROW_DEFAULT)};
constexpr RowDefault kVideoRows[] = {TMX_ROWS_VIDEO(TMX_ROW_DEFAULT)};
constexpr RowDefault kSceneRows[] = {TMX_ROWS_SCENE(TMX_ROW_DEFAULT)};
constexpr RowDefault kScpServiceRows[] = {TMX_ROWS_SCP_SERVICE(TMX_ROW_DEFAULT)};
constexpr RowDefault kSdCardRows[] = {TMX_ROWS_SD_CARD(TMX_ROW_DEFAULT)};
constexpr RowDefault kSerialRows[] = {TMX_ROWS_SERIAL(TMX_ROW_DEFAULT)};
constexpr RowDefault kUiRows[] = {TMX_ROWS_UI(TMX_ROW_DEFAULT)};
constexpr RowDefault kCamFocusRows[] = {TMX_ROWS_CAM_FOCUS(TMX_ROW_DEFAULT)};
constexpr RowDefault kAudDetectRows[] = {TMX_ROWS_AUD_DETECT(TMX_ROW_DEFAULT)};
#undef TMX_ROW_DEFAULT

// The 20 steps of the patrol, three rows each, all in one file.
#define TMX_PATROL_STEP(n)                                                                     \
  RowDefault{"PATROL_POSITION_" #n, "0"}, RowDefault{"PATROL_DURATION_" #n, "0"}, RowDefault { \
    "PATROL_SPEED_" #n, "100.0"                                                                \
  }
constexpr RowDefault kPatrolRows[] = {
    TMX_PATROL_STEP(0),  TMX_PATROL_STEP(1),  TMX_PATROL_STEP(2),  TMX_PATROL_STEP(3),  TMX_PATROL_STEP(4),
    TMX_PATROL_STEP(5),  TMX_PATROL_STEP(6),  TMX_PATROL_STEP(7),  TMX_PATROL_STEP(8),  TMX_PATROL_STEP(9),
    TMX_PATROL_STEP(10), TMX_PATROL_STEP(11), TMX_PATROL_STEP(12), TMX_PATROL_STEP(13), TMX_PATROL_STEP(14),
    TMX_PATROL_STEP(15), TMX_PATROL_STEP(16), TMX_PATROL_STEP(17), TMX_PATROL_STEP(18), TMX_PATROL_STEP(19),
};
#undef TMX_PATROL_STEP

/** A default that differs in some tables of a family (first to last). */
struct DefaultOverride {
  Family family;
  int32_t first;
  int32_t last;
  int32_t row;
  std::string_view value;
};

constexpr DefaultOverride kOverrides[] = {
    {Family::Camera, 0, 0, camera_row::COMMENT2, "General"},
    {Family::Scene, 0, 0, scene_row::COMMENT2, "General"},
    {Family::Scene, 1, 1, scene_row::COMMENT2, "Traffic"},
    {Family::Scene, 2, 2, scene_row::COMMENT2, "Day"},
    {Family::Scene, 3, 3, scene_row::COMMENT2, "Night"},
    {Family::Scene, 4, 4, scene_row::COMMENT2, "Dvr_Save"},
    {Family::Scene, 5, 5, scene_row::COMMENT2, "Wide_d"},
    {Family::Scene, 6, 6, scene_row::COMMENT2, "Blc"},
    {Family::Scene, 7, 7, scene_row::COMMENT2, "Lumx"},
    {Family::Position, 1, 19, position_row::POSITION_STATUS, "unregistered"},
    {Family::Position, 1, 19, position_row::POSITION_TITLE, ""},
    {Family::Encode, 0, 0, encode_row::ENC_STATUS, "on"},
    {Family::Encode, 1, 2, encode_row::ENC_STATUS, "off"},
    {Family::Encode, 0, 0, encode_row::FRAME_SIZE, "1920x1080"},
    {Family::Encode, 1, 1, encode_row::FRAME_SIZE, "1280x720"},
    {Family::Encode, 2, 2, encode_row::FRAME_SIZE, "640x360"},
    {Family::Encode, 0, 0, encode_row::QUALITY, "320k"},
    {Family::Encode, 1, 1, encode_row::QUALITY, "180k"},
    {Family::Encode, 2, 2, encode_row::QUALITY, "80k"},
};

constexpr int32_t kUntested = std::numeric_limits<int32_t>::max();

// clang-format off
constexpr std::array<FamilyInfo, static_cast<size_t>(Family::kCount)> kFamilies = {{
    {Family::Camdsp, "/mnt/sysinfo/kq40_camdsp.conf", 1, kCamdspRows,
     {1, nullptr, "invalid camdsp config id:"}, {1, nullptr, nullptr}},
    {Family::Camera, "/mnt/flash/sysconfig/camera.conf", 1, kCameraRows,
     {1, nullptr, "invalid camera config id:"}, {1, nullptr, nullptr}},
    {Family::Network, "/mnt/flash/sysconfig/network.conf", 1, kNetworkRows,
     {1, nullptr, "invalid network config id:"}, {1, nullptr, nullptr}},
    {Family::System, "/mnt/sysinfo/system.conf", 1, kSystemRows,
     {1, nullptr, "invalid system config id:"}, {1, nullptr, nullptr}},
    {Family::Application, "/mnt/flash/sysconfig/application/application%ld.conf", 10, kApplicationRows,
     {kUntested, nullptr, "invalid application config id:"},
     {10, "Invalid PositionConfig Application ID : ", "Invalid PositionConfig ID : "}},
    {Family::InputPin, "/mnt/flash/sysconfig/input_pin.conf", 1, kInputPinRows,
     {1, nullptr, "invalid input pin config id:"}, {1, nullptr, nullptr}},
    {Family::OutputPin, "/mnt/flash/sysconfig/output_pin.conf", 1, kOutputPinRows,
     {1, nullptr, "invalid output pin config id:"}, {1, nullptr, nullptr}},
    {Family::Audio, "/mnt/flash/sysconfig/audio.conf", 1, kAudioRows,
     {1, nullptr, "invalid audio config id:"}, {1, nullptr, nullptr}},
    {Family::Event, "/mnt/flash/sysconfig/event/event%ld.conf", 10, kEventRows,
     {10, nullptr, "invalid event config id:"}, {10, nullptr, "Invalid PositionConfig ID : "}},
    {Family::Patrol, "/mnt/flash/sysconfig/patrol/0.conf", 20, kPatrolRows,
     {20, nullptr, "invalid patrol config id:"}, {20, nullptr, nullptr}},
    {Family::Position, "/mnt/flash/sysconfig/position/%ld.conf", 20, kPositionRows,
     {20, nullptr, "invalid position config id:"}, {20, nullptr, "Invalid POSITIONConfig ID : "}},
    {Family::Encode, "/mnt/flash/sysconfig/encode/encode%ld.conf", 3, kEncodeRows,
     {3, nullptr, "invalid encord config id:"}, {4, nullptr, "Invalid EncodeConfig ID : "}},
    {Family::Video, "/mnt/flash/sysconfig/video.conf", 1, kVideoRows,
     {1, nullptr, "invalid VideoConfig ID: "}, {1, nullptr, "Invalid VideoConfig ID : "}},
    {Family::Scene, "/mnt/flash/sysconfig/scene/%ld.conf", 8, kSceneRows,
     {8, "invalid scene id :", "invalid scene config id:"}, {8, "invalid scene id :", "invalid scene config id:"}},
    {Family::ScpService, "/mnt/flash/sysconfig/scpservice.conf", 1, kScpServiceRows,
     {1, nullptr, "invalid SCP Service config id:"}, {1, nullptr, "invalid scp service config id:"}},
    {Family::SdCard, "/mnt/flash/sysconfig/sdcard.conf", 1, kSdCardRows,
     {1, nullptr, "invalid SD Card config id:"}, {1, nullptr, "invalid SD Card config id:"}},
    {Family::Serial, "/mnt/flash/sysconfig/serial.conf", 1, kSerialRows,
     {1, nullptr, "invalid serial config id:"}, {1, nullptr, "invalid serial config id:"}},
    {Family::Ui, "/mnt/flash/sysconfig/ui.conf", 1, kUiRows,
     {1, nullptr, "invalid ui config id:"}, {1, nullptr, "invalid ui config id:"}},
    {Family::CamFocus, "/mnt/sysinfo/kq40_autofocus.conf", 1, kCamFocusRows,
     {1, nullptr, "invalid autofocus config id:"}, {1, nullptr, nullptr}},
    {Family::AudDetect, "/mnt/flash/sysconfig/aud_detect/aud_detect%ld.conf", 2, kAudDetectRows,
     {3, " invalid audiodetect channel id:", " invalid audiodetect itme id:"},
     {3, " invalid audiodetect channel id:", " invalid audiodetect itme id:"}},
}};
// clang-format on

constexpr bool isInEnumOrder() {
  for (size_t i = 0; i < kFamilies.size(); ++i) {
    if (kFamilies[i].family != static_cast<Family>(i)) return false;
  }
  return true;
}
static_assert(isInEnumOrder());

std::span<const RowDefault> rowsOfTable(const FamilyInfo& info, int32_t index) {
  if (info.family != Family::Patrol) return info.rows;
  const size_t rows = info.rows.size() / static_cast<size_t>(info.tables);
  return info.rows.subspan(static_cast<size_t>(index) * rows, rows);
}

}  // namespace

const FamilyInfo& familyInfo(Family family) {
  assert(family < Family::kCount);
  return kFamilies[static_cast<size_t>(family)];
}

std::string familyPath(Family family, int32_t index) {
  constexpr std::string_view kIndex = "%ld";
  std::string path = familyInfo(family).path;
  const size_t position = path.find(kIndex);
  if (position != std::string::npos) path.replace(position, kIndex.size(), std::to_string(index));
  return path;
}

std::string_view rowKey(Row row, int32_t table) {
  const FamilyInfo& info = familyInfo(row.family);
  const bool exists = table >= 0 && table < info.tables && row.number >= 0 && row.number < countRows(row.family);
  return exists ? rowsOfTable(info, table)[static_cast<size_t>(row.number)].key : std::string_view();
}

std::vector<ConfigTable> makeTables(Family family) {
  const FamilyInfo& info = familyInfo(family);
  std::vector<ConfigTable> tables(static_cast<size_t>(info.tables));
  for (int32_t index = 0; index < info.tables; ++index) {
    ConfigTable& table = tables[static_cast<size_t>(index)];
    table.reserve(rowsOfTable(info, index).size());
    for (const RowDefault& row : rowsOfTable(info, index)) {
      table.push_back({static_cast<int32_t>(table.size()), row.key, std::string(row.value)});
    }
  }
  for (const DefaultOverride& item : kOverrides) {
    if (item.family != family) continue;
    for (int32_t index = item.first; index <= item.last; ++index) {
      tables[static_cast<size_t>(index)][static_cast<size_t>(item.row)].value = item.value;
    }
  }
  return tables;
}
