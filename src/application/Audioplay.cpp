#include "application/Audioplay.h"

#include "application/AudioClip.h"

namespace Application {
namespace {

int32_t numberOf(const Selectors& selectors) { return selectorNumber(selectors, CAudioplay::kLayer, 1); }

AudioClip clipOf(const Request& request) { return AudioClip(numberOf(request.selectors)); }

}  // namespace

int32_t CAudioplay::CStatus::remove(Request& request) {
  const AudioClip clip = clipOf(request);
  const int32_t result = clip.remove();
  return result < 0 ? result : clip.setName("");
}

int32_t CAudioplay::CStatus::play(Request& request) { return clipOf(request).play(); }

int32_t CAudioplay::CStatus::stop(Request& /*request*/) { return AudioClip::stop(); }

int32_t CAudioplay::CStatus::fetch(const Request& request, std::string& text) {
  text = clipOf(request).isRegistered() ? "registered" : "unregistered";
  return 0;
}

Cell CAudioplay::CName::locate(const Selectors& selectors, Row row) {
  return {{row.family, row.number + numberOf(selectors) - 1}};
}

int32_t CAudioplay::CName::act(Request& request) { return clipOf(request).setName(request.value); }

int32_t CAudioplay::CName::fetch(const Request& request, std::string& text) {
  text = clipOf(request).name();
  return 0;
}

int32_t CAudioplay::CTime::fetch(const Request& request, std::string& text) {
  text = playTimeText(clipOf(request).playTime());
  return 0;
}

}  // namespace Application
