#pragma once

#include <cstddef>
#include <cstdint>

/**
 * The rows of the configuration tables, each with the key under which it stands in its file and its built-in default.
 *
 * A row is addressed by its position in its table, so the order here is part of the interface and the order in the
 * file. TMX_ROWS_FAMILY(X) calls X(KEY, "default") row by row; family_row::KEY is the row's number. The word case of a
 * default is that of the node that owns the row ("OFF" in picture rows, "off" elsewhere).
 */

/** DSP adjustment data. */
#define TMX_ROWS_CAMDSP(X) \
  X(ADJUSTIRIS, "128")     \
  X(PREWBNORMR, "115")     \
  X(PREWBNORMB, "165")     \
  X(PREWBLOWR, "115")      \
  X(PREWBLOWB, "165")      \
  X(PREWBHIGHR, "115")     \
  X(PREWBHIGHB, "165")     \
  X(IRYGAIN1, "240")       \
  X(IBYGAIN1, "256")       \
  X(IRYHUE1, "65280")      \
  X(IBYHUE1, "65454")      \
  X(SPOTNUM, "0")          \
  X(EVREF, "42")

/** One scene: its name and 26 picture settings. */
#define TMX_ROWS_SCENE(X)            \
  X(COMMENT2, "")                    \
  X(COLOR, "0")                      \
  X(MONITOR_TYPE, "custom")          \
  X(GAMMA, "0.45")                   \
  X(SHUTTER, "AUTO")                 \
  X(EASY_DAY_NIGHT, "OFF")           \
  X(AUTO_FOCUS, "on")                \
  X(IRIS, "0")                       \
  X(PEDESTAL, "0")                   \
  X(AUTO_BLACK, "OFF")               \
  X(ENHANCE_BAND, "high")            \
  X(ENHANCE, "0")                    \
  X(DNR_3D, "mid")                   \
  X(BRIGHTNESS, "AUTO")              \
  X(SENSEUP_LIMIT, "8")              \
  X(AUTO_EXPOSURE_PRIORITY, "combo") \
  X(TRUE_DAY_NIGHT, "color")         \
  X(AVPK_COLOR, "8")                 \
  X(AVPK_BW, "8")                    \
  X(WHITE_BALANCE, "AUTO")           \
  X(WB_R_GAIN, "54")                 \
  X(WB_B_GAIN, "87")                 \
  X(BLC, "OFF")                      \
  X(LUMX, "OFF")                     \
  X(AUTO_EXPOSURE_REFERENCE, "0")    \
  X(ATW_CONVERGENCE, "normal")       \
  X(BLC_AREA, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF")

/** Camera-wide settings, the scene in force, and the working copy of that scene (the scene rows, in their order). */
#define TMX_ROWS_CAMERA(X)        \
  X(COMMENT, "KT-A10")            \
  X(PRIVACY_MASK_STATUS, "off")   \
  X(PRIVACY_MASK_AREA, "0")       \
  X(PRIVACY_MASK_COLOR, "808080") \
  X(STEALTH, "off")               \
  X(IDENTIFY, "off")              \
  X(IRIS_LENSTYPE, "lens1")       \
  X(OSD, "off")                   \
  X(OSD_POSITION, "lefttop")      \
  X(DEFECT_DETECT, "off")         \
  X(FPN, "off")                   \
  X(DYNAMIC_DEFECT_DETECT, "off") \
  X(POSITION_SPEED, "100")        \
  X(DIGITAL_ZOOM_LIMIT, "x8.00")  \
  X(FOCUS_STEP, "50")             \
  X(RETURN_STATUS, "off")         \
  X(RETURN_MODE, "home")          \
  X(RETURN_TIMEOUT, "60")         \
  X(DETECT_STATUS, "OFF")         \
  X(DETECT_AREA, "0")             \
  X(DETECT_LEVEL, "0")            \
  X(DETECT_TEMPO, "0")            \
  X(TAMP_DETECT_STATUS, "OFF")    \
  X(TAMP_DETECT_LEVEL, "0")       \
  X(TAMP_DETECT_TEMPO, "0")       \
  X(WBAREAH1, "0")                \
  X(WBAREAV1, "0")                \
  X(WBAREAH2, "1919")             \
  X(WBAREAV2, "1079")             \
  X(SCENE_FILE_NAME, "0")         \
  TMX_ROWS_SCENE(X)

/** Network. Later rows stand behind the older ones, because row numbers are the interface. */
#define TMX_ROWS_NETWORK(X)                      \
  X(HOSTNAME, "kt-a10/30")                       \
  X(DOMAINNAME, "")                              \
  X(GATEWAY_IPV4, "0.0.0.0")                     \
  X(IF1_IP, "192.168.0.2")                       \
  X(IF1_NETMASK, "255.255.255.0")                \
  X(IF1_DHCP, "off")                             \
  X(IF1_MTU, "1500")                             \
  X(IF1_TTL_MULTICAST, "32")                     \
  X(IF1_TTL_UNICAST, "64")                       \
  X(IF1_DSCP, "0")                               \
  X(IF1_DSCP_VIDEO, "0")                         \
  X(IF1_NEGOTIATION, "auto")                     \
  X(IF1_BROADCAST, "192.168.0.255")              \
  X(DEST1, "off")                                \
  X(DEST1_HOST, "225.0.1.1")                     \
  X(DEST1_PORT, "49152")                         \
  X(DEST1_FRAMERATE, "30")                       \
  X(AC_CTRL_LOGIC, "deny")                       \
  X(AC_CTRL_HOST1, "")                           \
  X(AC_CTRL_HOST2, "")                           \
  X(AC_CTRL_HOST3, "")                           \
  X(AC_CTRL_HOST4, "")                           \
  X(AC_CTRL_HOST5, "")                           \
  X(AC_CTRL_HOST6, "")                           \
  X(AC_CTRL_HOST7, "")                           \
  X(AC_CTRL_HOST8, "")                           \
  X(AC_CTRL_HOST9, "")                           \
  X(AC_CTRL_HOST10, "")                          \
  X(NTP, "off")                                  \
  X(NTP_HOST, "0.0.0.0")                         \
  X(NTP_INTERVAL, "7")                           \
  X(NTP_UNIT, "hour")                            \
  X(DNS, "on")                                   \
  X(DNS_IP, "0.0.0.0")                           \
  X(HTTP_CONFIG_PORT, "80")                      \
  X(IF1_DSCP_VIDEOMPEG, "0")                     \
  X(IF1_DSCP_AUDIO, "0")                         \
  X(IF1_DSCP_VIDEOH264, "0")                     \
  X(DEST2, "off")                                \
  X(DEST2_HOST, "225.0.2.1")                     \
  X(DEST2_PORT, "49154")                         \
  X(DEST2_FRAMERATE, "30")                       \
  X(DEST3, "off")                                \
  X(DEST3_HOST, "225.0.3.1")                     \
  X(DEST3_PORT, "49156")                         \
  X(DEST3_FRAMERATE, "30")                       \
  X(DEST4, "off")                                \
  X(DEST4_HOST, "225.0.4.1")                     \
  X(DEST4_PORT, "49158")                         \
  X(AMX_BEACON_SERVER, "on")                     \
  X(IF1_IPV6, "off")                             \
  X(HTTP_CONFIG_STREAMING_PRIORITY, "framerate") \
  X(HTTPS_CONFIG_STATUS, "off")                  \
  X(HTTPS_CONFIG_PORT, "443")                    \
  X(HTTPS_CONFIG_STREAMING_STATUS, "off")        \
  X(FTP_SERVER_STATUS, "off")                    \
  X(SNMP_AGENT_STATUS, "off")                    \
  X(PSIA_SERVER_STATUS, "off")                   \
  X(PSIA_CONFIG_PORT, "12800")                   \
  X(ONVIF_SERVER_STATUS, "off")                  \
  X(ONVIF_CONFIG_PORT, "12800")                  \
  X(HTTP_CONFIG_STATUS, "on")                    \
  X(HTTP_CONFIG_STREAMING_STATUS, "on")          \
  X(RTSP_CONFIG_PORT, "554")                     \
  X(ONVIF_COMMENT, "Standard")                   \
  X(ONVIF_QUALITY_PRIORITY_JPEG, "quality")      \
  X(ONVIF_QUALITY_PRIORITY_H264, "bitrate")      \
  X(DEST_USERDATA, "on")                         \
  X(ONVIF_METADATA_MOTION_DETECTION_EVENT, "on") \
  X(RTSP_SERVER_STATUS, "on")                    \
  X(DOMAINNAME2, "")                             \
  X(DOMAINNAME3, "")                             \
  X(DOMAINNAME4, "")                             \
  X(GATEWAY_IPV4_2, "0.0.0.0")                   \
  X(GATEWAY_IPV4_3, "0.0.0.0")                   \
  X(GATEWAY_IPV4_4, "0.0.0.0")                   \
  X(IF1_DHCP_NTP, "off")                         \
  X(IF1_DHCP_DNS, "off")                         \
  X(IF1_DHCP_HOSTNAME, "off")                    \
  X(DEST5, "off")                                \
  X(DEST5_HOST, "225.0.5.1")                     \
  X(DEST5_PORT, "49160")

/** Clock. */
#define TMX_ROWS_SYSTEM(X) \
  X(TIMEZONE, "Japan")     \
  X(DAYLIGHTSAVING, "on")

/** Transfer settings (alike in all ten tables, read from the first), one recording object, audio clip names. */
#define TMX_ROWS_APPLICATION(X)                \
  X(APPLICATION_FTP_HOST, "0.0.0.0")           \
  X(APPLICATION_FTP_USER, "")                  \
  X(APPLICATION_FTP_PASSWORD, "")              \
  X(APPLICATION_FTP_MODE, "active")            \
  X(APPLICATION_FTP_PORT, "21")                \
  X(APPLICATION_FTP_PATH, "")                  \
  X(APPLICATION_FTP_NAMING, "default")         \
  X(APPLICATION_FTP_NAMING_OPTION, "")         \
  X(APPLICATION_SMTP_TYPE, "simple")           \
  X(APPLICATION_SMTP_HOST, "0.0.0.0")          \
  X(APPLICATION_SMTP_PORT, "25")               \
  X(APPLICATION_SMTP_MAILFROM, "")             \
  X(APPLICATION_POP_HOST, "0.0.0.0")           \
  X(APPLICATION_POP_PORT, "110")               \
  X(APPLICATION_POP_USER, "")                  \
  X(APPLICATION_POP_PASSWORD, "")              \
  X(APPLICATION_OBJECT_PREREC, "5")            \
  X(APPLICATION_OBJECT_POSTREC, "5")           \
  X(APPLICATION_OBJECT_FRAMERATE, "15")        \
  X(APPLICATION_OBJECT_SOURCE, "encode(1)")    \
  X(APPLICATION_OBJECT_OVERWRITE_STATUS, "on") \
  X(APPLICATION_AUDIO_FILENAME_1, "")          \
  X(APPLICATION_AUDIO_FILENAME_2, "")          \
  X(APPLICATION_AUDIO_FILENAME_3, "")          \
  X(APPLICATION_AUDIO_FILENAME_4, "")          \
  X(APPLICATION_AUDIO_FILENAME_5, "")

/** Alarm inputs. */
#define TMX_ROWS_INPUT_PIN(X)      \
  X(INPUTPIN_STATUS, "on")         \
  X(INPUTPIN_PIN1_STATUS, "break") \
  X(INPUTPIN_PIN2_STATUS, "break")

/** Alarm outputs; durations in milliseconds. */
#define TMX_ROWS_OUTPUT_PIN(X)       \
  X(OUTPUTPIN_STATUS, "on")          \
  X(OUTPUTPIN_PIN1_STATUS, "break")  \
  X(OUTPUTPIN_PIN1_DURATION, "1000") \
  X(OUTPUTPIN_PIN2_STATUS, "break")  \
  X(OUTPUTPIN_PIN2_DURATION, "1000")

/** Microphone and speaker. */
#define TMX_ROWS_AUDIO(X)            \
  X(AUDIO_HALFDUPLEX, "on")          \
  X(AUDIO_MIC_GAIN, "32")            \
  X(AUDIO_HALFDUPLEX_GAIN, "-18")    \
  X(AUDIO_INPUT_POWER_SUPPLY, "off") \
  X(AUDIO_OUTPUT_VOLUME, "5")

/** One event rule with its filters for the seven days, sunday first. */
#define TMX_ROWS_EVENT(X)  \
  X(EVENT_STATUS, "off")   \
  X(EVENT_TRIGGER, "")     \
  X(EVENT_ACTION, "")      \
  X(FILTER_STATUS1, "off") \
  X(FILTER_STATUS2, "off") \
  X(FILTER_STATUS3, "off") \
  X(FILTER_STATUS4, "off") \
  X(FILTER_STATUS5, "off") \
  X(FILTER_STATUS6, "off") \
  X(FILTER_STATUS7, "off") \
  X(FILTER_TYPE1, "mask")  \
  X(FILTER_TYPE2, "mask")  \
  X(FILTER_TYPE3, "mask")  \
  X(FILTER_TYPE4, "mask")  \
  X(FILTER_TYPE5, "mask")  \
  X(FILTER_TYPE6, "mask")  \
  X(FILTER_TYPE7, "mask")  \
  X(FILTER_TIME1, "")      \
  X(FILTER_TIME2, "")      \
  X(FILTER_TIME3, "")      \
  X(FILTER_TIME4, "")      \
  X(FILTER_TIME5, "")      \
  X(FILTER_TIME6, "")      \
  X(FILTER_TIME7, "")

/** One preset position; position 0 is the home position (other defaults: Families.cpp). */
#define TMX_ROWS_POSITION(X)       \
  X(POSITION_STATUS, "registered") \
  X(POSITION_TITLE, "Home")        \
  X(POSITION_PAN, "0")             \
  X(POSITION_TILT, "0")            \
  X(POSITION_ZOOM, "0")

/** One encoder channel; status, frame size and quality differ by channel (Families.cpp). */
#define TMX_ROWS_ENCODE(X)        \
  X(ENC_STATUS, "")               \
  X(ENCTYPE_CH, "jpeg")           \
  X(FRAME_SIZE, "")               \
  X(FRAME_RATE, "5")              \
  X(QUALITY, "")                  \
  X(CBR_MODE, "VFS")              \
  X(BITRATE, "2000000")           \
  X(IFRAME_INTERVAL, "5")         \
  X(RANGE_FRAMERATE_LIMIT, "off") \
  X(RANGE_IFRAMEINTERVAL_LIMIT, "off")

/** Analog output. */
#define TMX_ROWS_VIDEO(X) X(VIDEO_OUTPUT, "off")

/** Tuning values of the service adjustment. */
#define TMX_ROWS_SCP_SERVICE(X) \
  X(ALC_SPEED, "20")            \
  X(ALC_ERR_EN, "10")           \
  X(ALC_ERR_H, "400")           \
  X(ALC_ERR_L, "100")           \
  X(ALC_RESTART, "3")           \
  X(DN_HYSTERESIS_TRUEDN, "21") \
  X(DN_HYSTERESIS_EASYDN, "6")  \
  X(IRIS_START, "3000")         \
  X(IRIS_INTGAIN, "8")          \
  X(IRIS_PROGAIN, "192")        \
  X(IRIS_LIMIT_H, "3318")       \
  X(IRIS_LIMIT_L, "0")          \
  X(ATW_SPEED, "2")             \
  X(ATW_ERR_EN, "15")           \
  X(ATW_ERR_H, "180")           \
  X(ATW_ERR_L, "20")            \
  X(ATW_RESTART, "20")          \
  X(W_R_RANGE, "0")             \
  X(W_B_RANGE, "3")             \
  X(W_G_RANGE_LOW, "7")         \
  X(W_G_RANGE_NORM, "7")        \
  X(W_G_RANGE_HIGH, "7")        \
  X(W_MG_RANGE_LOW, "9")        \
  X(W_MG_RANGE_NORM, "9")       \
  X(W_MG_RANGE_HIGH, "9")       \
  X(N_R_RANGE, "-12")           \
  X(N_B_RANGE, "1")             \
  X(N_G_RANGE_LOW, "7")         \
  X(N_G_RANGE_NORM, "7")        \
  X(N_G_RANGE_HIGH, "7")        \
  X(N_MG_RANGE_LOW, "9")        \
  X(N_MG_RANGE_NORM, "9")       \
  X(N_MG_RANGE_HIGH, "9")       \
  X(ET_LUMX_SPEED, "4")         \
  X(ET_LUMX_GAIN, "128")        \
  X(AF_FOR_IR, "0")             \
  X(SUB_IRIS_START, "3000")     \
  X(SUB_IRIS_INTGAIN, "8")      \
  X(SUB_IRIS_PROGAIN, "192")    \
  X(SUB_IRIS_LIMIT_H, "3318")   \
  X(SUB_IRIS_LIMIT_L, "0")

/** Memory card. */
#define TMX_ROWS_SD_CARD(X) \
  X(SDCARD_STATUS, "on")    \
  X(SDCARD_ERECMODE, "off")

/** Serial port. */
#define TMX_ROWS_SERIAL(X)      \
  X(SERIAL_BAUDRATE, "9600")    \
  X(SERIAL_DATABIT, "8")        \
  X(SERIAL_PARITY, "none")      \
  X(SERIAL_STOPBIT, "1")        \
  X(SERIAL_COMMENT, "serial 1") \
  X(SERIAL_RTS_OFFSET, "0")

/** One rate-control word for each encoder channel and codec. */
#define TMX_ROWS_UI(X)                   \
  X(UI_ENC1_CBRMODE_JPEG, "afs")         \
  X(UI_ENC1_CBRMODE_H264HIGH, "cbr")     \
  X(UI_ENC1_CBRMODE_H264BASELINE, "cbr") \
  X(UI_ENC1_CBRMODE_MPEG4, "cbr")        \
  X(UI_ENC2_CBRMODE_JPEG, "afs")         \
  X(UI_ENC2_CBRMODE_H264HIGH, "cbr")     \
  X(UI_ENC2_CBRMODE_H264BASELINE, "cbr") \
  X(UI_ENC2_CBRMODE_MPEG4, "cbr")        \
  X(UI_ENC3_CBRMODE_JPEG, "afs")         \
  X(UI_ENC3_CBRMODE_H264HIGH, "cbr")     \
  X(UI_ENC3_CBRMODE_H264BASELINE, "cbr") \
  X(UI_ENC3_CBRMODE_MPEG4, "cbr")

/** Autofocus state and its flags. */
#define TMX_ROWS_CAM_FOCUS(X) \
  X(FOCUS_FACTORY_POS, "0")   \
  X(FOCUS_POS, "0")           \
  X(FOCUS_DIR, "near")        \
  X(FOCUS_IR, "day")          \
  X(NIGHTFOCUS_OFFSET, "0")   \
  X(AF_ICR_FLG, "0")          \
  X(OP_AF_FLG, "0")           \
  X(MANUAL_AF_FLG, "0")       \
  X(NIGHTOFFSET_FLG, "0")     \
  X(BAF_POS_INIT_FLG, "0")

/** One audio detection channel. */
#define TMX_ROWS_AUD_DETECT(X) \
  X(AUD_DETECT_STATUS, "off")  \
  X(AUD_DETECT_LEVEL, "50")    \
  X(AUD_DETECT_TEMPORAL, "1000")

/** One step of the patrol; in the file the keys carry the step's number (Families.cpp). */
#define TMX_ROWS_PATROL(X) \
  X(PATROL_POSITION, "0")  \
  X(PATROL_DURATION, "0")  \
  X(PATROL_SPEED, "100.0")

/** The families of settings; each has one table per file, only the patrol's tables share one file. */
enum class Family : int8_t {
  Camdsp,
  Camera,
  Network,
  System,
  Application,
  InputPin,
  OutputPin,
  Audio,
  Event,
  Patrol,
  Position,
  Encode,
  Video,
  Scene,
  ScpService,
  SdCard,
  Serial,
  Ui,
  CamFocus,
  AudDetect,
  kCount,
};

// The numbers of a family's rows; each family's are a type of its own, which knows its family.
#define TMX_ROW_NUMBER(key, value) key,
#define TMX_ROW_TYPE(name, rows, family_name)                            \
  namespace name {                                                       \
  enum Row : int32_t { rows(TMX_ROW_NUMBER) kCount };                    \
  constexpr Family familyOf(Row /*row*/) { return Family::family_name; } \
  }
TMX_ROW_TYPE(camdsp_row, TMX_ROWS_CAMDSP, Camdsp)
TMX_ROW_TYPE(scene_row, TMX_ROWS_SCENE, Scene)
TMX_ROW_TYPE(camera_row, TMX_ROWS_CAMERA, Camera)
TMX_ROW_TYPE(network_row, TMX_ROWS_NETWORK, Network)
TMX_ROW_TYPE(system_row, TMX_ROWS_SYSTEM, System)
TMX_ROW_TYPE(application_row, TMX_ROWS_APPLICATION, Application)
TMX_ROW_TYPE(input_pin_row, TMX_ROWS_INPUT_PIN, InputPin)
TMX_ROW_TYPE(output_pin_row, TMX_ROWS_OUTPUT_PIN, OutputPin)
TMX_ROW_TYPE(audio_row, TMX_ROWS_AUDIO, Audio)
TMX_ROW_TYPE(event_row, TMX_ROWS_EVENT, Event)
TMX_ROW_TYPE(position_row, TMX_ROWS_POSITION, Position)
TMX_ROW_TYPE(encode_row, TMX_ROWS_ENCODE, Encode)
TMX_ROW_TYPE(video_row, TMX_ROWS_VIDEO, Video)
TMX_ROW_TYPE(scp_service_row, TMX_ROWS_SCP_SERVICE, ScpService)
TMX_ROW_TYPE(sd_card_row, TMX_ROWS_SD_CARD, SdCard)
TMX_ROW_TYPE(serial_row, TMX_ROWS_SERIAL, Serial)
TMX_ROW_TYPE(ui_row, TMX_ROWS_UI, Ui)
TMX_ROW_TYPE(cam_focus_row, TMX_ROWS_CAM_FOCUS, CamFocus)
TMX_ROW_TYPE(aud_detect_row, TMX_ROWS_AUD_DETECT, AudDetect)
TMX_ROW_TYPE(patrol_row, TMX_ROWS_PATROL, Patrol)
#undef TMX_ROW_TYPE
#undef TMX_ROW_NUMBER

/** The numbers of some family's rows. */
template <class Type>
concept RowNumber = requires(Type row) {
  familyOf(row);
};

/** A row of whichever family: made of its name (network_row::IF1_IP), or for loops of a family and a number. */
struct Row {
  constexpr Row() = default;
  constexpr Row(RowNumber auto row) : family(familyOf(row)), number(row) {}  // NOLINT: the name is the row
  constexpr Row(Family rowFamily, int32_t rowNumber) : family(rowFamily), number(rowNumber) {}

  [[nodiscard]] constexpr bool exists() const { return family != Family::kCount; }
  constexpr bool operator==(const Row&) const = default;

  Family family = Family::kCount;
  int32_t number = 0;
};

/** How many rows a table of the family has. */
constexpr int32_t countRows(Family family) {
  constexpr int32_t kCounts[] = {
      camdsp_row::kCount,      camera_row::kCount,    network_row::kCount,     system_row::kCount,
      application_row::kCount, input_pin_row::kCount, output_pin_row::kCount,  audio_row::kCount,
      event_row::kCount,       patrol_row::kCount,    position_row::kCount,    encode_row::kCount,
      video_row::kCount,       scene_row::kCount,     scp_service_row::kCount, sd_card_row::kCount,
      serial_row::kCount,      ui_row::kCount,        cam_focus_row::kCount,   aud_detect_row::kCount};
  return family < Family::kCount ? kCounts[static_cast<size_t>(family)] : 0;
}
