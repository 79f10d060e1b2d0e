#include <unistd.h>

#include "local/CommonInterface.h"
#include "local/UnixDomain.h"
#include "request/Log.h"

bool CommonInterface::Open(const std::string& path) {
  m_isConnected = false;
  m_fd.reset(UnixDomain::createClientSocket());
  if (m_fd.get() < 1) {
    TMX_LOG(LOG_ERR, ": can not create client sock error(%m)");
    m_fd.reset();
    return false;
  }
  if (UnixDomain::connectServ(m_fd.get(), path) < 0) {
    TMX_LOG(LOG_ERR, ": connect serv error(%m)");
    UnixDomain::closeClientSocket(m_fd.release());
    return false;
  }
  m_isConnected = true;
  return true;
}

void CommonInterface::Close() {
  if (!m_isConnected) {
    TMX_LOG(LOG_DEBUG, " : Not Connect");
    return;
  }
  UnixDomain::closeClientSocket(m_fd.release());
  m_isConnected = false;
}

bool CommonInterface::Read(void* buffer, size_t count) {
  if (!m_isConnected) {
    TMX_LOG(LOG_ERR, ": not Connect");
    return false;
  }
  const ssize_t result = read(m_fd.get(), buffer, count);
  if (result < 0) {
    TMX_LOG(LOG_ERR, ": Read error(%m)");
    return false;
  }
  if (static_cast<size_t>(result) == count) return true;
  TMX_LOG(LOG_ERR, ":Read num error");
  return false;
}

bool CommonInterface::Write(const void* buffer, size_t count) {
  if (!m_isConnected) {
    TMX_LOG(LOG_ERR, ": not Connect");
    return false;
  }
  const ssize_t result = write(m_fd.get(), buffer, count);
  if (result < 0) {
    TMX_LOG(LOG_ERR, ": Write error(%m)");
    return false;
  }
  if (static_cast<size_t>(result) == count) return true;
  TMX_LOG(LOG_ERR, ":Write num error");
  return false;
}
