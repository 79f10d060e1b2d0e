#pragma once

#include <cstdint>
#include <string>

#include "application/CApplicationApiBase.h"
#include "config/Rows.h"

// The servers and accounts by which the recorder sends files and mail. The recorder hears of each setting; then it is
// kept in all ten files of the application, of which the first is read.

namespace Application {

struct CFtp : CApplicationApiBase {
  struct CHost;
  struct CUser;
  struct CType;
  struct CMode;
  struct CPort;
  struct CPath;
  struct CNaming;
  struct CNamingOption;
  struct CPassword;
};

struct CSmtp : CApplicationApiBase {
  struct CType;
  struct CHost;
  struct CPort;
  struct CMailfrom;
};

struct CPop : CApplicationApiBase {
  struct CType;
  struct CHost;
  struct CPort;
  struct CUser;
  struct CPassword;
};

// ---- What the settings have in common ------------------------------------------------------------------------------

/** Keeps a value in both images and the ten files; one that cannot be written does not stop the others, and is 200. */
void keepInAllTables(Row row, const std::string& value);

template <application_row::Row row>
int32_t keepInAll(Request& request) {
  keepInAllTables(row, request.value);
  return 0;
}

/** Of a password there is no read, whoever asks. */
[[nodiscard]] int32_t refuseRead(const Request& request, std::string& text);

/** The rule of a setting: what it takes, who hears of it, where it stands, and how it is shown. */
template <application_row::Row row>
constexpr Rule setting(const Accepts& accepts, const Peer& peer = {}, const Shows& shows = {}) {
  return {.accepts = accepts, .place = row, .peer = peer, .act = keepInAll<row>, .keeps = Keeps::ByAct, .shows = shows};
}

template <application_row::Row row>
constexpr Rule password(uint32_t id) {
  Rule rule = setting<row>(Text{.most = 32, .escapes = Escapes::Decoded}, peer::recorderText(id));
  rule.fetch = refuseRead;
  return rule;
}

constexpr Rule onlyType(std::string_view word) { return {.accepts = Words{word}, .shows = {.fixed = word}}; }

/** No server is 0.0.0.0, which a host can be only by "%00". */
[[nodiscard]] int32_t checkHost(Request& request);
[[nodiscard]] int32_t checkMailFrom(Request& request);

inline constexpr Test kHost{
    checkHost, {"a host's name or IPv4 address; %00 for none", "192.168.7.20 example.org %00", "224.0.0.1"}};
inline constexpr Number kPort{.low = 1, .high = 65535, .outside = status::kNotUnderstood};
inline constexpr Shows kEscaped{.escaped = true};

// ---- Files by FTP --------------------------------------------------------------------------------------------------

struct CFtp::CHost : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_FTP_HOST>(kHost, peer::recorderText(0x221100));
};

struct CFtp::CUser : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_FTP_USER>(
      Text{.most = 32, .escapes = Escapes::DecodedPlus}, peer::recorderText(0x221200), kEscaped);
};

struct CFtp::CPassword : CApplicationApiBase {
  static constexpr Rule rule = password<application_row::APPLICATION_FTP_PASSWORD>(0x221300);
};

struct CFtp::CType : CApplicationApiBase {
  static constexpr Rule rule = onlyType("ftp");
};

struct CFtp::CMode : CApplicationApiBase {
  static constexpr Rule rule =
      setting<application_row::APPLICATION_FTP_MODE>(Words{"active", "passive"}, peer::recorderNumber(0x221400));
};

/** Shares its row with the port of the POP server; the row of its own name is only told at a start. */
struct CFtp::CPort : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_POP_PORT>(kPort, peer::recorderNumber(0x221600));
};

struct CFtp::CPath : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_FTP_PATH>(
      Text{.most = 63, .escapes = Escapes::Decoded, .forbidden = "\\:*?\"<>|"}, peer::recorderText(0x221700), kEscaped);
};

struct CFtp::CNaming : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_FTP_NAMING>(Words{"default", "type1", "type2"},
                                                                                peer::recorderNumber(0x221800));
};

struct CFtp::CNamingOption : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_FTP_NAMING_OPTION>(
      Text{.most = 16, .escapes = Escapes::Decoded, .forbidden = "\\/:*?\"<>|"}, peer::recorderText(0x221900),
      kEscaped);
};

// ---- Mail ----------------------------------------------------------------------------------------------------------

struct CSmtp::CType : CApplicationApiBase {
  static constexpr Rule rule =
      setting<application_row::APPLICATION_SMTP_TYPE>(Words{"simple", "pbs"}, peer::recorderNumber(0x231000));
};

struct CSmtp::CHost : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_SMTP_HOST>(kHost, peer::recorderText(0x232000));
};

struct CSmtp::CPort : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_SMTP_PORT>(kPort, peer::recorderNumber(0x233000));
};

/** Nobody hears of the sender. */
struct CSmtp::CMailfrom : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_SMTP_MAILFROM>(
      Test{checkMailFrom, {"a mail address; %00 for none", "camera@example.org %00", "@x a@b@c"}});
};

struct CPop::CType : CApplicationApiBase {
  static constexpr Rule rule = onlyType("pop3");
};

struct CPop::CHost : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_POP_HOST>(kHost, peer::recorderText(0x242000));
};

struct CPop::CPort : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_POP_PORT>(kPort, peer::recorderNumber(0x243000));
};

struct CPop::CUser : CApplicationApiBase {
  static constexpr Rule rule = setting<application_row::APPLICATION_POP_USER>(
      Text{.most = 64, .escapes = Escapes::Decoded}, peer::recorderText(0x244000), kEscaped);
};

struct CPop::CPassword : CApplicationApiBase {
  static constexpr Rule rule = password<application_row::APPLICATION_POP_PASSWORD>(0x245000);
};

}  // namespace Application
