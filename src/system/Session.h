#pragma once

#include <concepts>
#include <cstdint>
#include <string>

#include "service/Session.h"
#include "system/CSystemApiBase.h"
#include "tree/Leaf.h"
#include "tree/Selector.h"

/** Who is being served: live data of the session daemon, of which nothing is kept. */
namespace System {

/** The slot of the streams that a path speaks of. */
[[nodiscard]] inline int32_t sessionSlot(const Selectors& selectors) {
  constexpr size_t kSlotLayer = 2;  // system.session.sending(n)
  return selectorNumber(selectors, kSlotLayer, 1);
}

/** What the daemon answers to a command, one of a slot or one of all; empty after a failed exchange. */
template <auto Command>
[[nodiscard]] std::string askSession(const Selectors& selectors) {
  if constexpr (std::invocable<decltype(Command), ::Session&, int32_t>) {
    return (::Session().*Command)(sessionSlot(selectors));
  } else {
    return (::Session().*Command)();
  }
}

/** A leaf by its command. */
template <class Derived, auto Command>
class SessionText : public Leaf<Derived, CSystemApiBase> {
 public:
  using Leaf<Derived, CSystemApiBase>::Leaf;
  int32_t fetch(const Request& request, std::string& text) {
    text = askSession<Command>(request.selectors);
    return 0;
  }
};

/** A rate by its command, in kilobits per second; there is no unit behind a failed exchange. */
template <class Derived, auto Command>
class SessionRate : public SessionText<Derived, Command> {
 public:
  using SessionText<Derived, Command>::SessionText;
  int32_t fetch(const Request& request, std::string& text) {
    const int32_t result = SessionText<Derived, Command>::fetch(request, text);
    if (!text.empty()) text += "k";
    return result;
  }
};

/** The whole picture, in one answer of many lines. */
class CSession : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  int32_t execRead(ExecArgs* args) override;
  class CSending;
  class CReceiving;
  class CTotalBitrate;
  class CSendingCount;
  class CSendingMax;
  class CReceivingCount;
  class CReceivingMax;

 private:
  /** The answer of the node behind a path, with its line end. */
  [[nodiscard]] std::string line(const Parameter& asked, const std::string& path) const;
  [[nodiscard]] std::string sendingLines(const Parameter& asked, int32_t slot) const;
  [[nodiscard]] std::string receivingLines(const Parameter& asked) const;
};

class CSession::CTotalBitrate : public SessionRate<CTotalBitrate, &::Session::getTotalBitrate> {
 public:
  using SessionRate::SessionRate;
};

class CSession::CSendingCount : public SessionText<CSendingCount, &::Session::getSendingCount> {
 public:
  using SessionText::SessionText;
};

class CSession::CSendingMax : public Leaf<CSendingMax, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.shows = {.fixed = "22"}};
};

class CSession::CReceivingCount : public SessionText<CReceivingCount, &::Session::getReceivingCount> {
 public:
  using SessionText::SessionText;
};

class CSession::CReceivingMax : public Leaf<CReceivingMax, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Rule rule{.shows = {.fixed = "1"}};
};

class CSession::CSending : public Leaf<CSession::CSending, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 22}};
  class CTo;
  class CFrom;
  class CBitrate;
};

class CSession::CSending::CBitrate : public SessionRate<CBitrate, &::Session::getSendingBitrate> {
 public:
  using SessionRate::SessionRate;
};

class CSession::CSending::CTo : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CIp;
  class CPort;
  class CProtocol;
  class CSession;
};

class CSession::CSending::CTo::CIp : public SessionText<CIp, &::Session::getSendingToIp> {
 public:
  using SessionText::SessionText;
};

class CSession::CSending::CTo::CPort : public SessionText<CPort, &::Session::getSendingToPort> {
 public:
  using SessionText::SessionText;
};

class CSession::CSending::CTo::CProtocol : public SessionText<CProtocol, &::Session::getSendingToProtocol> {
 public:
  using SessionText::SessionText;
};

class CSession::CSending::CTo::CSession : public SessionText<CSession, &::Session::getSendingToSession> {
 public:
  using SessionText::SessionText;
};

class CSession::CSending::CFrom : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CEncode;
  class CFramesize;
  class CFramerate;
};

class CSession::CSending::CFrom::CEncode : public SessionText<CEncode, &::Session::getSendingFromEncode> {
 public:
  using SessionText::SessionText;
};

/** The frame size of the encoder channel that the stream comes from. */
class CSession::CSending::CFrom::CFramesize : public Leaf<CFramesize, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

/** Empty for a stream that is no video. */
class CSession::CSending::CFrom::CFramerate : public Leaf<CFramerate, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

class CSession::CReceiving : public Leaf<CSession::CReceiving, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static constexpr Selector selector{.takes = SelectorNumber{.low = 1, .high = 1}};
  class CFrom;
  class CTo;
  class CBitrate;
};

class CSession::CReceiving::CBitrate : public SessionRate<CBitrate, &::Session::getReceivingBitrate> {
 public:
  using SessionRate::SessionRate;
};

class CSession::CReceiving::CFrom : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CIp;
  class CPort;
  class CProtocol;
  class CSession;
};

class CSession::CReceiving::CFrom::CIp : public SessionText<CIp, &::Session::getReceivingFromIp> {
 public:
  using SessionText::SessionText;
};

class CSession::CReceiving::CFrom::CPort : public SessionText<CPort, &::Session::getReceivingFromPort> {
 public:
  using SessionText::SessionText;
};

class CSession::CReceiving::CFrom::CProtocol : public SessionText<CProtocol, &::Session::getReceivingFromProtocol> {
 public:
  using SessionText::SessionText;
};

class CSession::CReceiving::CFrom::CSession : public SessionText<CSession, &::Session::getReceivingFromSession> {
 public:
  using SessionText::SessionText;
};

class CSession::CReceiving::CTo : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CDecode;
};

class CSession::CReceiving::CTo::CDecode : public SessionText<CDecode, &::Session::getReceivingToDecode> {
 public:
  using SessionText::SessionText;
};

}  // namespace System
