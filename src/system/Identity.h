#pragma once

#include <cstdint>
#include <string>

#include "system/CSystemApiBase.h"
#include "tree/Leaf.h"

/** What this camera is: model, identifier, software, hardware. */
namespace System {

class CModel : public Leaf<CModel, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

/** The camera gets its identifier at the first read, and keeps it. */
class CGuid : public Leaf<CGuid, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

class CSoftware : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CRevision;
  class CProgramid;
};

class CSoftware::CRevision : public Leaf<CRevision, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

class CSoftware::CProgramid : public Leaf<CProgramid, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

class CHardware : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CClockBase;
  class CCpu;
  class CDdr;
};

/** A clock frequency that the GPIO driver tells. */
class CHardware::CClockBase : public Leaf<CClockBase, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);

 private:
  /** The driver's request number; its answer is a 32-bit word. */
  [[nodiscard]] virtual unsigned long ioctlNumber() const = 0;
};

class CHardware::CCpu : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CUtilization;
  class CClock;
};

/** Busy percentage since the last read, the first time since boot. */
class CHardware::CCpu::CUtilization : public Leaf<CUtilization, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  int32_t fetch(const Request& request, std::string& text);
};

class CHardware::CCpu::CClock : public CClockBase {
 public:
  using CClockBase::CClockBase;

 private:
  [[nodiscard]] unsigned long ioctlNumber() const override { return 0x8004b506; }
};

class CHardware::CDdr : public CSystemApiBase {
 public:
  using CSystemApiBase::CSystemApiBase;
  class CClock;
};

class CHardware::CDdr::CClock : public CClockBase {
 public:
  using CClockBase::CClockBase;

 private:
  [[nodiscard]] unsigned long ioctlNumber() const override { return 0x8004b607; }
};

/** The hardware address in the factory's notation: a write takes any 17 characters, a read shows a fixed text. */
class COzmMac : public Leaf<COzmMac, CSystemApiBase> {
 public:
  using Leaf::Leaf;
  static int32_t checkLength(Request& request);
  static constexpr Rule rule{
      .accepts = Test{checkLength},
      .shows = {.fixed = "00-C0-DE-11-11-11"},
      .answers = {.layer = "system", .command = ".status=restart"},
  };
  int32_t act(Request& request);
};

}  // namespace System
