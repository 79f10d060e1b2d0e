#include "managers/CApplicationMan.h"

#include "application/Audioplay.h"
#include "application/Event.h"
#include "application/Object.h"
#include "application/Transfer.h"

int32_t CApplicationMan::init() {
  add<Application::CEvent>("event");
  add<Application::CEvent::CFilter>("event.filter");
  add<Application::CEvent::CFilter::CStatus>("event.filter.status", "RWRW--");
  add<Application::CEvent::CFilter::CType>("event.filter.type", "RWRW--");
  add<Application::CEvent::CFilter::CTime>("event.filter.time", "RWRW--");
  add<Application::CEvent::CStatus>("event.status", "RWRWR-");
  add<Application::CEvent::CTrigger>("event.trigger", "RWRWR-");
  add<Application::CEvent::CAction>("event.action", "RWRWR-");

  add<Application::CObject>("object");
  add<Application::CObject::CSource>("object.source", "RWRWR-");
  add<Application::CObject::CFramesize>("object.framesize", "RWRWR-");
  add<Application::CObject::CFramerate>("object.framerate", "RWRWR-");
  add<Application::CObject::CPrerec>("object.prerec", "RWRWR-");
  add<Application::CObject::CPostrec>("object.postrec", "RWRWR-");
  add<Application::CObject::COverwrite>("object.overwrite");
  add<Application::CObject::COverwrite::CStatus>("object.overwrite.status", "RWRWR-");
  add<Application::CObject::COverwrite::CPeriod>("object.overwrite.period", "RWRWR-");

  add<Application::CPop>("pop");
  add<Application::CPop::CType>("pop.type", "RWRWR-");
  add<Application::CPop::CHost>("pop.host", "RWRWR-");
  add<Application::CPop::CPort>("pop.port", "RWRWR-");
  add<Application::CPop::CUser>("pop.user", "RWRWR-");
  add<Application::CPop::CPassword>("pop.password", "-W-W--");

  add<Application::CFtp>("ftp");
  add<Application::CFtp::CHost>("ftp.host", "RWRWR-");
  add<Application::CFtp::CUser>("ftp.user", "RWRWR-");
  add<Application::CFtp::CType>("ftp.type", "RWRWR-");
  add<Application::CFtp::CMode>("ftp.mode", "RWRWR-");
  add<Application::CFtp::CPort>("ftp.port", "RWRWR-");
  add<Application::CFtp::CPath>("ftp.path", "RWRWR-");
  add<Application::CFtp::CNaming>("ftp.naming", "RWRWR-");
  add<Application::CFtp::CNamingOption>("ftp.naming_option", "RWRWR-");
  add<Application::CFtp::CPassword>("ftp.password", "-W-W--");

  add<Application::CSmtp>("smtp");
  add<Application::CSmtp::CType>("smtp.type", "RWRWR-");
  add<Application::CSmtp::CHost>("smtp.host", "RWRWR-");
  add<Application::CSmtp::CPort>("smtp.port", "RWRWR-");
  add<Application::CSmtp::CMailfrom>("smtp.mailfrom", "RWRWR-");

  add<Application::CAudioplay>("audioplay");
  add<Application::CAudioplay::CStatus>("audioplay.status", "RWRWRW");
  add<Application::CAudioplay::CName>("audioplay.name", "RWRWRW");
  add<Application::CAudioplay::CTime>("audioplay.time", "R-R-R-");
  return 0;
}
