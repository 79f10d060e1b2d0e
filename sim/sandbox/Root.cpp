#include "sim/sandbox/Root.h"

#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "sim/sandbox/Home.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

/** Flags that a mount inside a user namespace must keep. */
unsigned long keptFlags(const Path& path) {
  struct statvfs info {};
  must(statvfs(path.c_str(), &info) == 0, "statvfs " + path.string());
  unsigned long flags = 0;
  if ((info.f_flag & ST_NOSUID) != 0) flags |= MS_NOSUID;
  if ((info.f_flag & ST_NODEV) != 0) flags |= MS_NODEV;
  if ((info.f_flag & ST_NOEXEC) != 0) flags |= MS_NOEXEC;
  if ((info.f_flag & ST_NOATIME) != 0) flags |= MS_NOATIME;
  if ((info.f_flag & ST_RELATIME) != 0) flags |= MS_RELATIME;
  return flags;
}

}  // namespace

void Root::enter() const {
  umask(022);
  must(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "make the mounts private");
  must(mount("camera", m_root.c_str(), "tmpfs", MS_NODEV, "mode=755") == 0, "mount " + m_root.string());
  must(chdir(m_root.c_str()) == 0, "enter " + m_root.string());
  skeleton();
  userland();
  etc();
  var();
  devices();
  kernelFiles();
  state();
  pivot();
}

void Root::skeleton() const {
  for (const char* directory : {"usr", "etc", "dev", "proc", "sys", "tmp", "mnt/flash", "mnt/sysinfo", "mnt/factory",
                                "opt/camera", "opt/daemon", "opt/factory", "root", "run/camera", "var/log",
                                "var/lib/snmp", "var/cache", "var/www", "var/tmp"}) {
    makeDirectory(directory);
  }
  link("/run", "var/run");
  for (const char* directory : {"bin", "sbin", "lib", "lib32", "lib64", "libx32"}) {
    std::error_code error;
    if (fs::exists(Path("/") / directory, error)) link(std::string("usr/") + directory, directory);
  }
}

/** The layers are bound to short relative names first, since the mount's option text has no room for every path. */
void Root::userland() const {
  std::string layers;
  int count = 0;
  std::vector<Path> folders{holes(), standIns(m_options.build, "opt/stand-ins"), m_options.userland / "usr", "/usr"};
  if (m_options.daemon != m_options.build)
    folders.insert(folders.begin() + 1, standIns(m_options.daemon, "opt/stand-ins-of-daemon"));
  for (const Path& layer : folders) {
    std::error_code error;
    if (!fs::is_directory(layer, error)) continue;
    const std::string name = ".layer" + std::to_string(count++);
    makeDirectory(name);
    bind(layer, name);
    layers += (layers.empty() ? "lowerdir=" : ":") + name;
  }
  must(mount("usr", "usr", "overlay", MS_RDONLY | MS_NODEV, layers.c_str()) == 0, "mount the overlay of /usr");
  while (count-- > 0) {
    const std::string name = ".layer" + std::to_string(count);
    must(umount2(name.c_str(), MNT_DETACH) == 0 && rmdir(name.c_str()) == 0, "release " + name);
  }
}

/** A layer that hides the programs which the camera is to do without: a file of the device number 0 is a hole. */
Path Root::holes() const {
  const std::string layer = "opt/missing";
  for (const std::string& program : m_options.missing) {
    const std::string hole = layer + program;
    makeDirectory(Path(hole).parent_path());
    must(mknod(hole.c_str(), S_IFCHR, 0) == 0, "hide " + program);
  }
  return m_root / layer;
}

/** A copy of a build's stand-ins: no layer may lie inside another one, and those of an installed build lie in /usr. */
Path Root::standIns(const Path& build, const std::string& layer) const {
  makeDirectory(layer);
  std::error_code error;
  fs::copy(build / "stand-ins" / "usr", m_root / layer, fs::copy_options::recursive | fs::copy_options::copy_symlinks,
           error);
  must(!error, "copy the stand-ins of " + build.string());
  return m_root / layer;
}

void Root::etc() const {
  for (const char* file : {"nsswitch.conf", "ld.so.cache", "ld.so.conf", "protocols", "services", "mime.types"}) {
    std::error_code error;
    fs::copy_file(Path("/etc") / file, m_root / "etc" / file, error);  // each is a convenience, none is needed
  }
  std::error_code error;
  if (fs::is_directory("/etc/alternatives", error)) {
    makeDirectory("etc/alternatives");
    bind("/etc/alternatives", "etc/alternatives", true);
  }
  std::string users = "root:x:0:0:root:/:/bin/sh\nnobody:x:65534:65534:nobody:/:/bin/false\n";
  std::string groups = "root:x:0:\ntty:x:5:\nnogroup:x:65534:\n";
  for (const auto& [name, number] : {std::pair{"console", consoleUser}, {"mqtt", mqttUser}}) {
    const std::string user = std::string(name) + ":x:" + std::to_string(number) + ":";
    users += user + std::to_string(number) + ":" + name + ":/:/bin/false\n";
    groups += user + "\n";
  }
  put("etc/passwd", users);
  put("etc/group", groups);
  put("etc/hosts", "127.0.0.1 localhost\n");
  put("etc/resolv.conf", "");
  put("etc/version", "1.00.003\n");
  put("etc/program", "KA10-0800\n");
  put("etc/ssl/openssl.cnf", "[req]\ndistinguished_name = name\n[name]\n");
  put("etc/snmp/snmp.conf", "mibs :\n");  // numbers suffice, and a missing module would be a line of the log
  put("etc/snmp/snmpd.conf", "agentaddress udp:161\nrocommunity public\n");
  put("etc/dhcpc/dhcpcd-eth0.cache", "");
  link("/mnt/flash/lighttpd", "etc/lighttpd");
  link("/mnt/sysinfo/localtime", "etc/localtime");
  link("/proc/self/mounts", "etc/mtab");
  for (const char* channel : {"0", "1", "2"}) {
    put(std::string("etc/onvif/default.vecfg_") + channel,
        "CODEC_TYPE= \"JPEG\"\nQUALITY= 100.0\nWIDTH= 1920\nHEIGHT= 1080\nVIDEORATECONTROL_FPS_LIMIT= 5 \n"
        "VIDEORATECONTROL_BPS_LIMIT= 2000\nH264CFG_GOVLEN= 0  \nH264CFG_PROFILE= \"High\"    \n");
  }
}

void Root::var() const {
  put("var/www/index.html", "<!DOCTYPE html>\n<title>Camera</title>\n<h1>Camera</h1>\n");
  put("var/www/setup/index.html", "<!DOCTYPE html>\n<title>Set-up</title>\n<h1>Set-up</h1>\n");
  put("var/log/messages.0", "");
}

void Root::devices() const {
  for (const char* device : {"null", "zero", "full", "random", "urandom", "tty"}) {
    put(std::string("dev/") + device, "");
    bind(Path("/dev") / device, std::string("dev/") + device);
  }
  makeDirectory("dev/shm");
  makeDirectory("dev/pts");
  must(mount("devpts", "dev/pts", "devpts", MS_NOSUID | MS_NOEXEC, "newinstance,ptmxmode=0666") == 0, "mount devpts");
  link("pts/ptmx", "dev/ptmx");
  link("/proc/self/fd", "dev/fd");
  link("fd/0", "dev/stdin");
  link("fd/1", "dev/stdout");
  link("fd/2", "dev/stderr");
  for (const char* device : {"gpio", "ttyS1"})
    put(std::string("dev/") + device, "");
  for (const char* partition : {"5", "6"}) {
    for (const char* device : {"dev/mtd", "dev/mtdblock"}) {
      put(std::string(device) + partition, "");
      bind(m_options.home / (std::string("mtd") + partition), std::string(device) + partition);
    }
  }
}

void Root::kernelFiles() const {
  must(mount("proc", "proc", "proc", MS_NOSUID | MS_NOEXEC | MS_NODEV, nullptr) == 0, "mount /proc");
  // A memory card of 1886 megabytes.
  put("sys/block/mmcblk0/size", "3862528\n");
  put("sys/block/mmcblk0/queue/logical_block_size", "512\n");
}

void Root::state() const {
  const Path& home = m_options.home;
  bind(home / "flash", "mnt/flash");
  bind(home / "sysinfo", "mnt/sysinfo");
  bind(home / "tmp", "tmp");
  bind(home / "run", "run/camera");
  put("run/camera/journal.jsonl", "");
  bind(home / "journal.jsonl", "run/camera/journal.jsonl");
  put("var/log/messages", "");
  bind(home / "syslog", "var/log/messages");
  bind(home / "factory", "opt/factory", true);
  bind(m_options.build, "opt/camera", true);
  bind(m_options.daemon, "opt/daemon", true);
}

void Root::pivot() const {
  must(syscall(SYS_pivot_root, ".", ".") == 0, "pivot_root");
  must(umount2(".", MNT_DETACH) == 0 && chdir("/") == 0, "leave the host's root");
}

void Root::bind(const Path& source, const std::string& target, bool readOnly) const {
  must(mount(source.c_str(), target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0, "bind " + source.string());
  if (!readOnly) return;
  const unsigned long flags = MS_REMOUNT | MS_BIND | MS_RDONLY | keptFlags(target);
  must(mount(nullptr, target.c_str(), nullptr, flags, nullptr) == 0, "protect " + source.string());
}

void Root::put(const std::string& path, const std::string& text) const {
  makeDirectory(Path(path).parent_path());
  writeFile(m_root / path, text);
}

void Root::link(const std::string& target, const std::string& path) const {
  must(symlink(target.c_str(), path.c_str()) == 0, "link " + path);
}

void Root::makeDirectory(const std::string& path) const {
  std::error_code error;
  fs::create_directories(m_root / path, error);
  must(!error, "create " + path);
}

void makeNetwork() {
  const Command commands{
      "ip link set lo up",
      "ip link add eth0 address 00:c0:de:11:11:11 type veth peer name peer0 && ip link set peer0 up"};
  for (const std::string& command : commands)
    must(run({"sh", "-c", command}) == 0, command);
}

}  // namespace sim
