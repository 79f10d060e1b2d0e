#pragma once

#include <cstdint>
#include <string>

#include "system/CSystemApiBase.h"
#include "tree/Node.h"

/** What this camera is: model, identifier, software, hardware. */
namespace System {

/** Rule::peer: the first word of a file, of at most `id` bytes with its end; askFlash holds the flash lock meanwhile.
 */
[[nodiscard]] int32_t askFile(const Peer& file, const Request& request, std::string& text);
[[nodiscard]] int32_t askFlash(const Peer& file, const Request& request, std::string& text);

struct CModel : CSystemApiBase {
  static constexpr Rule rule{.peer = {.ask = askFlash, .id = 32, .path = "/mnt/flash/model"}};
};

/** The camera gets its identifier at the first read, and keeps it. */
struct CGuid : CSystemApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

struct CSoftware : CSystemApiBase {
  struct CRevision;
  struct CProgramid;
};

struct CSoftware::CRevision : CSystemApiBase {
  static constexpr Rule rule{.peer = {.ask = askFile, .id = 128, .path = "/etc/version"}};
};

struct CSoftware::CProgramid : CSystemApiBase {
  static constexpr Rule rule{.peer = {.ask = askFile, .id = 128, .path = "/etc/program"}};
};

struct CHardware : CSystemApiBase {
  struct CCpu;
  struct CDdr;
};

/** A clock frequency that the GPIO driver tells; its request number is the peer's id, its answer a 32-bit word. */
[[nodiscard]] int32_t askGpioDriver(const Peer& peer, const Request& request, std::string& text);

struct CHardware::CCpu : CSystemApiBase {
  struct CUtilization;
  struct CClock;
};

/** Busy percentage since the last read, the first time since boot. */
struct CHardware::CCpu::CUtilization : CSystemApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

struct CHardware::CCpu::CClock : CSystemApiBase {
  static constexpr Rule rule{.peer = {.ask = askGpioDriver, .id = 0x8004b506}};
};

struct CHardware::CDdr : CSystemApiBase {
  struct CClock;
};

struct CHardware::CDdr::CClock : CSystemApiBase {
  static constexpr Rule rule{.peer = {.ask = askGpioDriver, .id = 0x8004b607}};
};

/** The hardware address in the factory's notation: a write takes any 17 characters, a read shows a fixed text. */
struct COzmMac : CSystemApiBase {
  static int32_t act(Request& request);
  static constexpr Rule rule{
      .accepts = Text{.most = 17, .least = 17},  // "00-11-22-33-44-55"
      .act = act,
      .shows = {.fixed = "00-C0-DE-11-11-11"},
      .answers = {.layer = "system", .command = ".status=restart", .brings = Brings::IntoForce},
  };
};

}  // namespace System
