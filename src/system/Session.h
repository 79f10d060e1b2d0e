#pragma once

#include <concepts>
#include <cstdint>
#include <string>

#include "service/Session.h"
#include "system/CSystemApiBase.h"
#include "tree/Node.h"
#include "tree/Selector.h"

/** Who is being served: live data of the session daemon, of which nothing is kept. */
namespace System {

/** The slot of the streams that a path speaks of. */
[[nodiscard]] inline int32_t sessionSlot(const Selectors& selectors) {
  constexpr size_t kSlotLayer = 2;  // system.session.sending(n)
  return selectorNumber(selectors, kSlotLayer, 1);
}

/** Rule::fetch by the daemon's command, one of a slot or one of all; the text is empty after a failed exchange. */
template <auto Command>
int32_t ask(const Request& request, std::string& text) {
  if constexpr (std::invocable<decltype(Command), ::Session&, int32_t>) {
    text = (::Session().*Command)(sessionSlot(request.selectors));
  } else {
    text = (::Session().*Command)();
  }
  return 0;
}

/** The rule of a rate, in kilobits per second. */
constexpr Rule rateBy(Fetch command) { return {.fetch = command, .shows = {.suffix = "k"}}; }

/** The whole picture, in one answer of many lines. */
struct CSession : CSystemApiBase {
  int32_t execRead(ExecArgs* args) override;
  struct CSending;
  struct CReceiving;
  struct CTotalBitrate;
  struct CSendingCount;
  struct CSendingMax;
  struct CReceivingCount;
  struct CReceivingMax;

 private:
  /** The answer of the node behind a path, with its line end. */
  [[nodiscard]] std::string line(const Parameter& asked, const std::string& path) const;
  [[nodiscard]] std::string sendingLines(const Parameter& asked, int32_t slot) const;
  [[nodiscard]] std::string receivingLines(const Parameter& asked) const;
};

struct CSession::CTotalBitrate : CSystemApiBase {
  static constexpr Rule rule = rateBy(ask<&::Session::getTotalBitrate>);
};

struct CSession::CSendingCount : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getSendingCount>};
};

struct CSession::CSendingMax : CSystemApiBase {
  static constexpr Rule rule{.shows = {.fixed = "22"}};
};

struct CSession::CReceivingCount : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getReceivingCount>};
};

struct CSession::CReceivingMax : CSystemApiBase {
  static constexpr Rule rule{.shows = {.fixed = "1"}};
};

struct CSession::CSending : CSystemApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 22}, .without = "1"};
  struct CTo;
  struct CFrom;
  struct CBitrate;
};

struct CSession::CSending::CBitrate : CSystemApiBase {
  static constexpr Rule rule = rateBy(ask<&::Session::getSendingBitrate>);
};

struct CSession::CSending::CTo : CSystemApiBase {
  struct CIp;
  struct CPort;
  struct CProtocol;
  struct CSession;
};

struct CSession::CSending::CTo::CIp : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getSendingToIp>};
};

struct CSession::CSending::CTo::CPort : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getSendingToPort>};
};

struct CSession::CSending::CTo::CProtocol : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getSendingToProtocol>};
};

struct CSession::CSending::CTo::CSession : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getSendingToSession>};
};

struct CSession::CSending::CFrom : CSystemApiBase {
  struct CEncode;
  struct CFramesize;
  struct CFramerate;
};

struct CSession::CSending::CFrom::CEncode : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getSendingFromEncode>};
};

/** The frame size of the encoder channel that the stream comes from. */
struct CSession::CSending::CFrom::CFramesize : CSystemApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

/** Empty for a stream that is no video. */
struct CSession::CSending::CFrom::CFramerate : CSystemApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

struct CSession::CReceiving : CSystemApiBase {
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}, .without = "1"};
  struct CFrom;
  struct CTo;
  struct CBitrate;
};

struct CSession::CReceiving::CBitrate : CSystemApiBase {
  static constexpr Rule rule = rateBy(ask<&::Session::getReceivingBitrate>);
};

struct CSession::CReceiving::CFrom : CSystemApiBase {
  struct CIp;
  struct CPort;
  struct CProtocol;
  struct CSession;
};

struct CSession::CReceiving::CFrom::CIp : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getReceivingFromIp>};
};

struct CSession::CReceiving::CFrom::CPort : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getReceivingFromPort>};
};

struct CSession::CReceiving::CFrom::CProtocol : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getReceivingFromProtocol>};
};

struct CSession::CReceiving::CFrom::CSession : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getReceivingFromSession>};
};

struct CSession::CReceiving::CTo : CSystemApiBase {
  struct CDecode;
};

struct CSession::CReceiving::CTo::CDecode : CSystemApiBase {
  static constexpr Rule rule{.fetch = ask<&::Session::getReceivingToDecode>};
};

}  // namespace System
