#pragma once

#include "application/CApplicationApiBase.h"

namespace Application {

class CFtp : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
  class CHost;
  class CUser;
  class CType;
  class CMode;
  class CPort;
  class CPath;
  class CNaming;
  class CNamingOption;
  class CPassword;
};

class CFtp::CHost : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CUser : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CType : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CMode : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CPort : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CPath : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CNaming : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CNamingOption : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CFtp::CPassword : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CSmtp : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
  class CType;
  class CHost;
  class CPort;
  class CMailfrom;
};

class CSmtp::CType : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CSmtp::CHost : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CSmtp::CPort : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CSmtp::CMailfrom : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CPop : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
  class CType;
  class CHost;
  class CPort;
  class CUser;
  class CPassword;
};

class CPop::CType : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CPop::CHost : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CPop::CPort : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CPop::CUser : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

class CPop::CPassword : public CApplicationApiBase {
 public:
  using CApplicationApiBase::CApplicationApiBase;
};

}  // namespace Application
