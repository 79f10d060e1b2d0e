#pragma once

#include "sim/sandbox/Options.h"

namespace sim {

/**
 * The camera's private root, built in a tmpfs inside the camera's own mount namespace.
 *
 * /usr is the host's, read-only, under the packages that the host lacks and the stand-in programs; /bin, /sbin and /lib
 * lead into it. /mnt/flash, /mnt/sysinfo, /tmp and /run/camera are folders of the home. /etc, /var and /dev hold what
 * the camera's programs look for and nothing more. The build is at /opt/camera, the daemon's
 * build, which may be another, at /opt/daemon, the factory partition's tree at /opt/factory, all read-only.
 *
 * The functions end the process when something cannot be done: there is no camera then.
 */
class Root {
 public:
  explicit Root(const Options& options) : m_options(options), m_root(options.home / "root") {}

  /** Builds it and makes it the root of this process; the host's files are out of reach afterwards. */
  void enter() const;

 private:
  void skeleton() const;
  void userland() const;
  [[nodiscard]] Path holes() const;
  [[nodiscard]] Path standIns(const Path& build, const std::string& layer) const;
  void etc() const;
  void var() const;
  void devices() const;
  void kernelFiles() const;
  void state() const;
  void pivot() const;

  void bind(const Path& source, const std::string& target, bool readOnly = false) const;
  void put(const std::string& path, const std::string& text) const;
  void link(const std::string& target, const std::string& path) const;
  void makeDirectory(const std::string& path) const;

  const Options& m_options;
  Path m_root;
};

/** The camera's network card: lo, and eth0 as one end of a veth pair whose other end stays inside too. */
void makeNetwork();

}  // namespace sim
