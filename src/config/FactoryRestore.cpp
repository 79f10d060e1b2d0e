// Bringing factory data back: one file, one scene, or the whole partition.

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "config/Config.h"
#include "config/FlashLock.h"
#include "local/FileDescriptor.h"
#include "request/Log.h"

namespace {

constexpr const char* kFactoryDevice = "/dev/mtdblock6";
constexpr const char* kFileMount = "/tmp/tmp_factory/";
constexpr std::string_view kFlash = "/mnt/flash/";
constexpr const char* kFactoryMount = "/mnt/factory";

// Stands beside the partition for as long as that is being replaced.
constexpr const char* kRestoring = "/mnt/sysinfo/restoring";

void syncTimes(int times) {
  for (int i = 0; i < times; ++i)
    ::sync();
}

bool isRun(const std::string& command) { return std::system(command.c_str()) >= 0; }

/** The factory partition, read-only, on a directory made for it; both go away with the object. */
class FactoryFiles {
 public:
  FactoryFiles() {
    m_hasDirectory = ::mkdir(kFileMount, 0700) == 0;
    if (!m_hasDirectory) {
      TMX_LOG(LOG_ERR, "mkdir() err[%m]");
      return;
    }
    m_isMounted = ::mount(kFactoryDevice, kFileMount, "jffs2", MS_RDONLY, nullptr) == 0;
    if (!m_isMounted) TMX_LOG(LOG_ERR, "Can't mount /dev/mtdblock6[%m]");
  }
  ~FactoryFiles() {
    if (m_isMounted) ::umount(kFileMount);
    if (m_hasDirectory) ::rmdir(kFileMount);
  }
  FactoryFiles(const FactoryFiles&) = delete;
  FactoryFiles& operator=(const FactoryFiles&) = delete;

  [[nodiscard]] bool isMounted() const { return m_isMounted; }

  /** Takes both away now, and tells whether they went. */
  [[nodiscard]] bool remove() {
    m_isMounted = false;
    if (::umount(kFileMount) < 0) {
      TMX_LOG(LOG_ERR, "umount() err[%m]");
      return false;
    }
    m_hasDirectory = false;
    if (::rmdir(kFileMount) < 0) {
      TMX_LOG(LOG_ERR, "rmdir() err[%m]");
      return false;
    }
    return true;
  }

 private:
  bool m_hasDirectory = false;
  bool m_isMounted = false;
};

}  // namespace

int32_t Config::m_copyFactoryConfig(const std::string& path) {
  if (path.empty()) {
    TMX_LOG(LOG_ERR, "invalid arg");
    return kFailed;
  }
  const size_t position = path.find(kFlash);
  if (position == std::string::npos) {
    TMX_LOG(LOG_ERR, "not /mnt/flash/ member[%s]", path.c_str());
    return kFailed;
  }
  FactoryFiles factory;
  if (!factory.isMounted()) return kFailed;
  const std::string source = kFileMount + path.substr(position + kFlash.size());
  if (!isRun("cp " + source + " " + path)) {
    TMX_LOG(LOG_ERR, "system() err[%m]");
    return kFailed;
  }
  if (!factory.remove()) return kFailed;
  ::chmod(path.c_str(), 0644);
  syncTimes(4);
  return kDone;
}

bool Config::isRestoreCutShort() {
  if (::access(kRestoring, W_OK) != 0) return false;  // what cannot be taken away would stand there for ever
  TMX_LOG(LOG_ERR, "Config: a factory restore was cut short");
  return true;
}

int32_t Config::copyFactoryValueToConfig() {
  FileDescriptor(::open(kRestoring, O_WRONLY | O_CREAT | O_CLOEXEC, 0644)).reset();
  ::sync();
  if (!isRun("/usr/sbin/flash_eraseall /dev/mtd5")) {
    TMX_LOG(LOG_ERR, "Config: flash_eraseall error(/dev/mtd5)");
    ::unlink(kRestoring);
    return kFailed;
  }
  if (!isRun("/bin/dd if=/dev/mtd6 of=/dev/mtd5 bs=1k")) {
    TMX_LOG(LOG_ERR, "Config: dd error");
    return kFailed;
  }
  syncTimes(4);
  ::unlink(kRestoring);
  ::sync();
  return kDone;
}

int32_t Config::copyFactoryValueAndReboot() {
  FlashLock lock;
  if (!lock.isHeld()) {
    TMX_LOG(LOG_ERR, "Config: Failed to lock /mnt/flash.");
    return kLockFailed;
  }
  // Nobody may serve or change files while the partition is replaced below them.
  static_cast<void>(isRun("killall evman"));
  static_cast<void>(isRun("killall lighttpd"));
  const int32_t result = copyFactoryValueToConfig();
  static_cast<void>(endResetCamera(lock));
  return result;
}

int32_t Config::initilizeSceneFileFactory(int32_t scene) {
  FlashLock lock;
  if (!lock.isHeld()) {
    TMX_LOG(LOG_ERR, "Config: Failed to lock /mnt/flash.");
    return kLockFailed;
  }
  TMX_LOG(LOG_INFO, "%s ", kFactoryDevice);
  if (!isRun(std::string("mount -r -t jffs2 ") + kFactoryDevice + " " + kFactoryMount)) {
    TMX_LOG(LOG_ERR, "Config:: mount error. %s", kFactoryDevice);
    return kFailed;
  }
  const std::string file = "/sysconfig/scene/" + std::to_string(scene) + ".conf";
  const std::string factory = kFactoryMount + file;
  const std::string current = "/mnt/flash" + file;
  TMX_LOG(LOG_INFO, "access(%s) current(%s)", factory.c_str(), current.c_str());
  if (!isRun("cp -af " + factory + " " + current)) {
    TMX_LOG(LOG_ERR, "Config:: cp error. %s to %s ", factory.c_str(), current.c_str());
    return kFailed;
  }
  syncTimes(3);
  std::this_thread::sleep_for(std::chrono::microseconds(200));
  if (!isRun(std::string("umount -r ") + kFactoryMount)) {
    TMX_LOG(LOG_ERR, "Config:: umount -r error. %s", kFactoryMount);
    return kFailed;
  }
  if (lock.release() < 0) {
    TMX_LOG(LOG_ERR, "Config: Failed to unlock /mnt/flash");
    return kLockFailed;
  }
  return kDone;
}

int32_t Config::makeDevice(const std::string& path, const std::string& arguments) {
  if (!isRun("rm " + path)) {
    TMX_LOG(LOG_ERR, "Config: Device error. %s", path.c_str());
    return kFailed;
  }
  if (!isRun("mknod " + path + " " + arguments)) {
    TMX_LOG(LOG_ERR, "Config: mknod %s FAILED", path.c_str());
    return kFailed;
  }
  return kDone;
}
