#include "system/Accounts.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "config/FlashLock.h"
#include "local/CommonInterface.h"
#include "local/FileDescriptor.h"
#include "request/Log.h"
#include "service/CTmxdUtility.h"

namespace Accounts {
namespace {

constexpr const char* kFile = "/etc/lighttpd/.htpasswd";
constexpr size_t kLongestPassword = 16;

// The copy gets its name when it is whole: a part of one must not take the file's place at the next start.
constexpr const char* kBackUp =
    "cp -af /etc/lighttpd/.htpasswd /etc/lighttpd/.htpasswd.new && "
    "mv -f /etc/lighttpd/.htpasswd.new /etc/lighttpd/.htpasswd.bak";
constexpr const char* kDropCopy = "rm -f /etc/lighttpd/.htpasswd.new";
constexpr const char* kRestore = "mv -f /etc/lighttpd/.htpasswd.bak /etc/lighttpd/.htpasswd ";
constexpr const char* kRemoveBackUp = "rm -f /etc/lighttpd/.htpasswd.bak";

/** The copy as it is found at a start, by the folder behind /etc/lighttpd. */
constexpr const char* kLeftBackUp = "/mnt/flash/lighttpd/.htpasswd.bak";

// The shell, with a text of our own.
bool runs(const char* command) { return std::system(command) == 0; }  // NOLINT(cert-env33-c)

/**
 * Runs the tool, which writes the file anew, beside a copy that takes its place should the tool fail or the power be
 * cut. In here nothing may open the lock file: closing any of its descriptors would drop the lock.
 */
int32_t edit(const std::vector<std::string>& tool) {
  const FlashLock hold(FlashLock::Patience::Endless);
  if (!runs(kBackUp)) {
    TMX_LOG(LOG_ERR, "cp command error [ to backupfile from .htpasswd ]");
    TMX_LOG(LOG_ERR, " : maybe there are some bugs on FileSyste and LinuxOS");
    static_cast<void>(runs(kDropCopy));
    return -1;
  }
  if (CTmxdUtility::execProcess(tool) != 0) {
    static_cast<void>(runs(kRestore));
    return -1;
  }
  sync();
  if (!runs(kRemoveBackUp)) {
    TMX_LOG(LOG_ERR, "rm -f /etc/lighttpd/.htpasswd.bak error");
    static_cast<void>(runs(kRestore));  // as the next start would do
    return -1;
  }
  sync();
  return 0;
}

}  // namespace

int32_t isAccount(const std::string& account) {
  if (!CommonInterface::isFileExist(kFile)) return -1;
  const std::vector<std::string> lines = CommonInterface::readLines(kFile);
  const std::string entry = account + ":";
  const bool found =
      std::any_of(lines.begin(), lines.end(), [&](const std::string& line) { return line.find(entry) != line.npos; });
  return found ? 1 : 0;
}

int32_t setPassword(const std::string& account, const std::string& password) {
  if (password.empty() || password.size() > kLongestPassword) return -1;
  return edit({"htpasswd", "-bm", kFile, account, password});
}

int32_t remove(const std::string& account) {
  if (isAccount(account) != 1) return -1;
  const int32_t result = edit({"htpasswd", "-D", kFile, account});
  if (result < 0) TMX_LOG(LOG_ERR, "htpasswd -D error");
  return result;
}

void recover() {
  const FileDescriptor backUp(open(kLeftBackUp, O_RDWR | O_CLOEXEC));
  if (!backUp.isValid()) return;
  TMX_LOG(LOG_ERR, "recovery .htpasswd");
  if (!runs(kRestore)) TMX_LOG(LOG_ERR, "recovery .htpasswd mv error error(%m)");
  for (int i = 0; i < 3; ++i)
    sync();
}

}  // namespace Accounts
