#pragma once

#include "application/CApplicationApiBase.h"

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

struct CFtp::CHost : CApplicationApiBase {};

struct CFtp::CUser : CApplicationApiBase {};

struct CFtp::CType : CApplicationApiBase {};

struct CFtp::CMode : CApplicationApiBase {};

struct CFtp::CPort : CApplicationApiBase {};

struct CFtp::CPath : CApplicationApiBase {};

struct CFtp::CNaming : CApplicationApiBase {};

struct CFtp::CNamingOption : CApplicationApiBase {};

struct CFtp::CPassword : CApplicationApiBase {};

struct CSmtp : CApplicationApiBase {
  struct CType;
  struct CHost;
  struct CPort;
  struct CMailfrom;
};

struct CSmtp::CType : CApplicationApiBase {};

struct CSmtp::CHost : CApplicationApiBase {};

struct CSmtp::CPort : CApplicationApiBase {};

struct CSmtp::CMailfrom : CApplicationApiBase {};

struct CPop : CApplicationApiBase {
  struct CType;
  struct CHost;
  struct CPort;
  struct CUser;
  struct CPassword;
};

struct CPop::CType : CApplicationApiBase {};

struct CPop::CHost : CApplicationApiBase {};

struct CPop::CPort : CApplicationApiBase {};

struct CPop::CUser : CApplicationApiBase {};

struct CPop::CPassword : CApplicationApiBase {};

}  // namespace Application
