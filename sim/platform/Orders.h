#pragma once

#include <sys/stat.h>

#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace sim {

/**
 * What the stand-in of the closed library has been told: the lines "key=value" of the file $CAMERA_DSP (default
 * /run/camera/dsp). The file is read again when it has changed; without it every call succeeds and every value is its
 * default. Owned by the library, which guards it with its lock.
 *
 * The keys "fail", "fail_addr" and "fail_once" hold lists divided by commas; an item is the name of a function, the
 * name with what it was called for ("zr_set_video_bitrate:1", "zr_set_va_data:0x21"), or a DSP address alone ("0x21").
 * An item of "fail_once" counts for one call, until the file is written anew.
 */
class Orders {
 public:
  /** Looks whether the file has changed. */
  void refresh();

  /** Whether the call that goes by any of these names must fail. */
  [[nodiscard]] bool fails(std::initializer_list<std::string> names);

  [[nodiscard]] std::string text(const std::string& key, const std::string& preset) const;
  [[nodiscard]] int number(const std::string& key, int preset) const;

 private:
  void read(const char* path);

  struct stat m_stamp {};
  std::map<std::string, std::string> m_values;
  std::set<std::string> m_failing;
  std::set<std::string> m_failingOnce;
};

}  // namespace sim
