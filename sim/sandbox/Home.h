#pragma once

#include "sim/sandbox/Options.h"

namespace sim {

/** The user inside the camera as whom the console runs; a camera that is started without root has no other than root.
 */
inline constexpr uid_t consoleUser = 200;
/** The same for the agent of the broker. */
inline constexpr uid_t mqttUser = 201;

/**
 * One camera's state on the host: flash/, factory/, sysinfo/, tmp/, run/, the flash partitions mtd5 and mtd6, the
 * syslog and the journal. Everything that outlives a power cut is here, and nothing else of the host is ever written.
 *
 * While flash/ is "mounted", mtd5 holds a short marker. A factory restore writes the image of mtd6 over mtd5; the next
 * boot finds the image there and fills flash/ from it, as mounting the rewritten partition would.
 */
class Home {
 public:
  explicit Home(const Options& options) : m_options(options), m_home(options.home) {}

  /** Makes what is missing, anew after --fresh; applies the model and the features. */
  void prepare() const;

  /** What a boot finds: flash from the partition, an empty tmp/, no leavings of the last run. */
  void power() const;

  /** What was changed and not synced: on flash all the same, or lost with the power. */
  void settle(bool isKept) const;

  /** Makes one of these files that of a user inside. */
  void give(const std::string& name, uid_t user) const;

  [[nodiscard]] Path path(const std::string& name) const { return m_home / name; }
  [[nodiscard]] Path run(const std::string& name) const { return m_home / "run" / name; }

 private:
  void create() const;
  void makeCertificate() const;
  void applyModel() const;
  void makeFactoryImage() const;
  void mountFlash() const;

  const Options& m_options;
  Path m_home;
};

}  // namespace sim
