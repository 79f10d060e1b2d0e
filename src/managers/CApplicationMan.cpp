#include "managers/CApplicationMan.h"

#include "application/Audioplay.h"
#include "application/Event.h"
#include "application/Object.h"
#include "application/Transfer.h"
#include "config/Config.h"

namespace {

constexpr int32_t kEvents = 10;
constexpr int32_t kObjects = 10;

std::string stored(Row row, int32_t table = 0) { return Config::getInstance()->get(row, table); }

/** A text in the form in which a node that decodes its value takes it. */
std::string escaped(const std::string& text) {
  std::string escapes;
  for (const char c : text) {
    if (c == '%') {
      escapes += "%25";
    } else if (c == '+') {
      escapes += "%2B";
    } else {
      escapes += c;
    }
  }
  return escapes;
}

}  // namespace

void CApplicationMan::build() {
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
}

void CApplicationMan::replay() {
  m_replayMail();
  for (int32_t event = 0; event < kEvents; ++event)
    m_replayEvent(event);
  for (int32_t object = 1; object <= kObjects; ++object)
    m_replayObject("application.object(" + std::to_string(object) + ")");
  m_replayFtp();
}

/** Without a server the row holds an address that no write takes. */
void CApplicationMan::m_replayHost(const std::string& path, Row row) {
  const std::string host = stored(row);
  m_replay(path, host == "0.0.0.0" ? "" : host);
}

void CApplicationMan::m_replayText(const std::string& path, Row row) { m_replay(path, escaped(stored(row))); }

void CApplicationMan::m_replayMail() {
  m_replayHost("application.pop.host", application_row::APPLICATION_POP_HOST);
  m_replayStored("application.pop.port");
  m_replayText("application.pop.user", application_row::APPLICATION_POP_USER);
  m_replayText("application.pop.password", application_row::APPLICATION_POP_PASSWORD);
  m_replayStored("application.smtp.type");
  m_replayHost("application.smtp.host", application_row::APPLICATION_SMTP_HOST);
  m_replayStored("application.smtp.port");
}

/** The action goes as it is stored: the recorder may see an escape in it decoded. What is empty is not told. */
void CApplicationMan::m_replayEvent(int32_t event) {
  const std::string path = "application.event(" + std::to_string(event + 1) + ")";
  m_replay(path + ".trigger=" + stored(event_row::EVENT_TRIGGER, event));
  m_replay(path + ".action=" + stored(event_row::EVENT_ACTION, event));
  for (const Word& day : Application::CEvent::CFilter::days) {
    const std::string filter = path + ".filter(" + std::string(day.text) + ")";
    m_replayStored(filter + ".status");
    m_replayStored(filter + ".type");
    m_replayStored(filter + ".time");
  }
  m_replayStored(path + ".status");
  m_replay(path + ".status=restart");
}

void CApplicationMan::m_replayObject(const std::string& object) {
  for (const char* item : {".source", ".framerate", ".prerec", ".postrec", ".overwrite.status"})
    m_replayStored(object + item);
}

/** The port has a row of its own here, which no write reaches; no server is refused, and leaves the recorder's. */
void CApplicationMan::m_replayFtp() {
  m_replayStored("application.ftp.host");
  m_replayText("application.ftp.user", application_row::APPLICATION_FTP_USER);
  m_replayText("application.ftp.password", application_row::APPLICATION_FTP_PASSWORD);
  m_replayStored("application.ftp.mode");
  m_replay("application.ftp.port", stored(application_row::APPLICATION_FTP_PORT));
  m_replayText("application.ftp.path", application_row::APPLICATION_FTP_PATH);
  m_replayStored("application.ftp.naming");
  m_replayText("application.ftp.naming_option", application_row::APPLICATION_FTP_NAMING_OPTION);
}
