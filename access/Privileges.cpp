#include "access/Privileges.h"

#include <grp.h>
#include <linux/capability.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>

namespace tmx {
namespace {

/** Whether this process's user namespace has the number in the map, "uid_map" or "gid_map". */
bool isMapped(const char* map, unsigned number) {
  std::ifstream lines(std::string("/proc/self/") + map);
  unsigned long inside = 0;
  unsigned long outside = 0;
  unsigned long count = 0;
  while (lines >> inside >> outside >> count) {
    if (number >= inside && number - inside < count) return true;
  }
  return false;
}

/** What this process and its children can never get again. */
bool dropBoundingSet() {
  for (int capability = 0; prctl(PR_CAPBSET_DROP, capability, 0, 0, 0) == 0; ++capability) {
  }
  return errno == EINVAL;  // beyond the last one
}

bool dropHeld() {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  const std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
  return syscall(SYS_capset, &header, none.data()) == 0 && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0;
}

}  // namespace

bool dropCapabilities() { return dropBoundingSet() && dropHeld(); }

bool becomeUser(const std::string& user, const std::vector<std::string>& folders) {
  const passwd* entry = getpwnam(user.c_str());
  if (entry == nullptr) {
    errno = ENOENT;
    return false;
  }
  const uid_t uid = entry->pw_uid;
  const gid_t gid = entry->pw_gid;
  const bool isThere = isMapped("uid_map", uid) && isMapped("gid_map", gid);
  for (const std::string& folder : folders) {
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return false;
    if (isThere && chown(folder.c_str(), uid, gid) != 0) return false;
  }
  if (!dropBoundingSet()) return false;
  if (isThere && (setgroups(0, nullptr) != 0 || setresgid(gid, gid, gid) != 0 || setresuid(uid, uid, uid) != 0)) {
    return false;
  }
  return dropHeld();
}

}  // namespace tmx
