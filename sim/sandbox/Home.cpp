#include "sim/sandbox/Home.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "sim/preload/FaultPage.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

constexpr const char* mountedMarker = "mounted\n";

/** Runs a program, whose failure ends the process. */
void mustRun(const Command& command, const char* what, const Environment& environment = {}) {
  if (run(command, environment) == 0) return;
  std::fprintf(stderr, "camera: cannot %s\n", what);
  std::exit(1);
}

void makeDirectory(const Path& path) {
  std::error_code error;
  fs::create_directories(path, error);
  must(fs::is_directory(path, error), "create " + path.string());
}

void empty(const Path& directory) {
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(directory, error))
    fs::remove_all(entry.path(), error);
}

/** A tar image has its mark at a fixed place in the first header. */
bool isImage(const std::string& partition) { return partition.size() > 512 && partition.compare(257, 5, "ustar") == 0; }

}  // namespace

void Home::prepare() const {
  if (m_options.fresh) {
    for (const char* part : {"flash", "factory", "sysinfo", "tmp", "run", "syslog", "journal.jsonl", "mtd5", "mtd6"}) {
      std::error_code error;
      fs::remove_all(path(part), error);
    }
  }
  for (const char* directory : {"flash", "sysinfo", "tmp", "run", "root"})
    makeDirectory(path(directory));
  std::error_code error;
  if (!fs::exists(path("mtd6"), error)) {
    create();
  } else if (!m_options.model.empty() || !m_options.without.empty()) {
    applyModel();
  }
}

void Home::create() const {
  Command factory{m_options.build / "bin" / "camera-factory", m_home};
  mustRun(factory, "make the factory data");
  makeCertificate();
  makeFactoryImage();
  writeFile(path("mtd5"), readFile(path("mtd6")));
  if (!m_options.model.empty() || !m_options.without.empty()) applyModel();
}

/** The web server's certificate: every camera leaves the factory with one of its own. */
void Home::makeCertificate() const {
  const Path file = path("factory/lighttpd/server.pem");
  const Path tools = m_options.userland / "usr";
  const char* inherited = std::getenv("PATH");
  const Environment environment{
      {"PATH", std::string(inherited != nullptr ? inherited : "/bin") + ":" + (tools / "bin").string()},
      {"LD_LIBRARY_PATH", (tools / "lib" / CAMERA_LIBRARY_FOLDER).string()}};
  // Without a configuration file: where openssl is one of the unpacked packages, its own is not in place.
  const std::string script =
      "said=$(openssl req -x509 -config /dev/null -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 3650 "
      "-subj /CN=camera -keyout \"$1\" -out \"$1.crt\" 2>&1) || { echo \"$said\" >&2; exit 1; }";
  const Command command{"sh", "-c", script, "sh", file};
  mustRun(command, "make the certificate with openssl", environment);
  writeFile(file, readFile(file) + readFile(file.string() + ".crt"));
  std::error_code error;
  fs::remove(file.string() + ".crt", error);
}

/** The model name and the features are data of the factory, so they go there, into the image and into flash. */
void Home::applyModel() const {
  Command command{m_options.build / "bin" / "camera-factory", "--model-only"};
  if (!m_options.model.empty()) command.insert(command.end(), {"--model", m_options.model});
  for (const std::string& feature : m_options.without)
    command.insert(command.end(), {"--without", feature});
  command.push_back(m_home);
  mustRun(command, "set the model");
  const bool unmounted = isImage(readFile(path("mtd5")));
  makeFactoryImage();
  if (unmounted) {
    writeFile(path("mtd5"), readFile(path("mtd6")));
    return;
  }
  for (const char* file : {"model", "model.conf"}) {
    std::error_code error;
    fs::copy_file(path("factory") / file, path("flash") / file, fs::copy_options::overwrite_existing, error);
    must(!error, std::string("set the ") + file);
  }
}

void Home::makeFactoryImage() const {
  const Command command{"tar", "--format=ustar", "-C", path("factory"), "-cf", path("mtd6"), "."};
  mustRun(command, "make the factory image");
}

void Home::power() const {
  mountFlash();
  empty(path("tmp"));
  must(chmod(path("tmp").c_str(), 01777) == 0, "open " + path("tmp").string());
  for (const char* leaving : {"tmxd.exit", "tmxd.pid", "control", "init.pid"}) {
    std::error_code error;
    fs::remove(run(leaving), error);
  }
  writeFile(run("program"), m_options.daemon / "bin" / "tmxd");
  std::error_code error;
  for (const char* file : {"syslog", "journal.jsonl"}) {
    if (!fs::exists(path(file), error)) writeFile(path(file), "");
  }
  if (fs::file_size(run("fault"), error) != sizeof(FaultPage)) {
    writeFile(run("fault"), std::string(sizeof(FaultPage), '\0'));
  }
  give("run/fault", consoleUser);  // a fault can also meet what the console does on flash
  if (fs::exists(path("flash/mqtt/key.pem"), error)) give("flash/mqtt/key.pem", mqttUser);
  const Fd page(open(run("fault").c_str(), O_WRONLY | O_CLOEXEC));
  const std::uint32_t lit = 0;
  must(pwrite(page.get(), &lit, sizeof lit, offsetof(FaultPage, dark)) == sizeof lit, "light " + run("fault").string());
}

void Home::give(const std::string& name, uid_t user) const {
  if (geteuid() == 0) must(chown(path(name).c_str(), user, 0) == 0, "give " + path(name).string());
}

void Home::settle(bool isKept) const {
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(run("unsynced"), error)) {
    if (isKept) break;
    std::string name = entry.path().filename();  // "%mnt%flash%model", "%dev%mtd5"
    std::replace(name.begin(), name.end(), '%', '/');
    const Path file = path(name.substr(name.find('/', 1) + 1));
    fs::remove(file, error);
    if (entry.is_regular_file(error)) fs::copy_file(entry.path(), file, error);
  }
  fs::remove_all(run("unsynced"), error);
}

/** An image written over the mounted partition shows at the next boot; an erased one is an empty file system. */
void Home::mountFlash() const {
  const std::string partition = readFile(path("mtd5"));
  if (partition == mountedMarker) return;
  empty(path("flash"));
  if (isImage(partition)) {
    // A restore that was cut short leaves a part of the image, of which as much as can be read is there.
    const Command command{"tar", "-C", path("flash"), "-xf", path("mtd5")};
    if (sim::run(command) != 0) std::fputs("camera: the flash image is damaged\n", stderr);
  }
  writeFile(path("mtd5"), mountedMarker);
}

}  // namespace sim
