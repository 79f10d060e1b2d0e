#include "devices/UserinterfaceEncode.h"

namespace Userinterface {

Cell CEncode::CCbrMode::locate(const Selectors& selectors, Row row) {
  constexpr int32_t kRowsPerChannel = ui_row::UI_ENC2_CBRMODE_JPEG;
  const int32_t channel = selectorNumber(selectors, 1, 1);
  const int32_t codec = codecs.find(selectors[2]).value_or(0);
  return {.row = {row.family, row.number + (channel - 1) * kRowsPerChannel + codec}};
}

}  // namespace Userinterface
