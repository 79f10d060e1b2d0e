#include "cli/Catalogue.h"

#include <algorithm>
#include <array>

#include "cli/ApiList.h"

namespace tmx {
namespace {

struct LayerSelectors {
  std::string_view path;
  std::string_view selectors;  ///< parted by blanks; "1-5" stands for the five numbers
};

constexpr LayerSelectors kSelectors[] = {
    {"application.audioplay", "1-5"},
    {"application.event", "1-10"},
    {"application.event.filter", "sunday monday tuesday wednesday thursday friday saturday"},
    {"application.object", "1-10"},
    {"audio.input.detection", "1-2"},
    {"camera.detection", "motion tampering"},
    {"camera.motion.auto_patrol.position", "0-19"},
    {"camera.position", "0-19"},
    {"encode", "1-3"},
    {"encode.range", "jpeg"},
    {"network.access_control.host", "1-10"},
    {"network.destination", "1-5"},
    {"network.domainname", "0-3"},
    {"network.gateway.ip", "0-3"},
    {"network.http", "configuration streaming"},
    {"network.https", "configuration streaming"},
    {"network.onvif.metadata", "MotionDetectionEvent"},
    {"network.onvif.quality.priority", "jpeg h264"},
    {"peripheral.input_pin.pin", "1-2"},
    {"peripheral.output_pin.pin", "1-2"},
    {"peripheral.serial", "1"},
    {"storage.disk", "1"},
    {"userinterface.encode", "1-3"},
    {"userinterface.encode.cbr_mode", "jpeg h264high h264baseline mpeg4"},
};

/** Each stands for itself and for all below it. */
constexpr std::string_view kNoSettings[] = {
    "application.audioplay.status",
    "application.object.overwrite.period",
    "camera.defect_detect",
    "camera.dspadjust",
    "camera.focus",
    "camera.focusassist",
    "camera.fpn",
    "camera.image.true_daynight",
    "camera.image.white_balance.area",
    "camera.internal",
    "camera.motion.abszoom",
    "camera.motion.auto_patrol.status",
    "camera.motion.pan",
    "camera.motion.tilt",
    "camera.motion.zoom",
    "camera.position.status",
    "camera.scene.status",
    "camera.scp_get",
    "camera.scp_set",
    "encode.status",
    "network.destination.status",
    "network.http.type",
    "network.interface.status",
    "onvif",
    "storage.disk.initialize",
    "system._00c0de_ozm_mac",
    "system.date",
    "system.password",
};

struct Interruption {
  std::string_view commit;  ///< without selectors
  Interrupted what;
};
constexpr Interruption kInterruptions[] = {
    {"network.http.status=restart", Interrupted::WebServer},
    {"network.https.status=restart", Interrupted::WebServer},
    {"network.interface.status=restart", Interrupted::Camera},
    {"system.status=restart", Interrupted::Camera},
};

struct ShortName {
  std::string_view name;
  std::string_view root;
};
constexpr std::array<ShortName, 3> kShortNames = {
    {{"app", "application"}, {"periph", "peripheral"}, {"ui", "userinterface"}}};

std::string withLongRoot(std::string_view path) {
  const std::string_view root = path.substr(0, path.find('.'));
  for (const ShortName& entry : kShortNames) {
    if (root == entry.name) return std::string(entry.root) + std::string(path.substr(root.size()));
  }
  return std::string(path);
}

/** "1-3" becomes "1", "2", "3"; a word stays one. */
void appendSelectors(std::string_view word, std::vector<std::string>& selectors) {
  const std::size_t dash = word.find('-');
  if (dash == std::string_view::npos) {
    selectors.emplace_back(word);
    return;
  }
  const int last = std::stoi(std::string(word.substr(dash + 1)));
  for (int i = std::stoi(std::string(word.substr(0, dash))); i <= last; ++i)
    selectors.push_back(std::to_string(i));
}

std::vector<std::string> selectorsOf(std::string_view layerPath) {
  const auto* entry = std::find_if(std::begin(kSelectors), std::end(kSelectors),
                                   [&](const LayerSelectors& layer) { return layer.path == layerPath; });
  std::vector<std::string> selectors;
  std::string_view rest = entry == std::end(kSelectors) ? std::string_view() : entry->selectors;
  while (!rest.empty()) {
    const std::size_t blank = std::min(rest.find(' '), rest.size());
    appendSelectors(rest.substr(0, blank), selectors);
    rest.remove_prefix(std::min(blank + 1, rest.size()));
  }
  return selectors;
}

}  // namespace

std::vector<std::string> expandSelectors(const std::string& path) {
  std::vector<std::string> paths = {""};
  std::size_t begin = 0;
  while (begin <= path.size()) {
    const std::size_t end = std::min(path.find('.', begin), path.size());
    std::string layer = begin == 0 ? "" : ".";
    layer.append(path, begin, end - begin);
    const std::vector<std::string> selectors = selectorsOf(withLongRoot(std::string_view(path).substr(0, end)));
    std::vector<std::string> longer;
    for (const std::string& front : paths) {
      if (selectors.empty()) longer.push_back(front + layer);
      for (const std::string& selector : selectors)
        longer.emplace_back(front).append(layer).append("(").append(selector).append(")");
    }
    paths = std::move(longer);
    begin = end + 1;
  }
  return paths;
}

bool isSetting(std::string_view path) {
  const std::string full = withLongRoot(path);
  return std::none_of(std::begin(kNoSettings), std::end(kNoSettings), [&](std::string_view entry) {
    return full == entry || full.starts_with(std::string(entry) + ".");
  });
}

/** Streams, recordings, detection, masks and the analog output depend on what the encoders are set to. */
bool isMeasure(std::string_view path) { return path.starts_with("encode(") || path.starts_with("encode."); }

Interrupted interruptedBy(std::string_view commit) {
  const std::string plain = withoutSelectors(commit);
  const auto* entry = std::find_if(std::begin(kInterruptions), std::end(kInterruptions),
                                   [&](const Interruption& known) { return known.commit == plain; });
  return entry == std::end(kInterruptions) ? Interrupted::Nothing : entry->what;
}

}  // namespace tmx
