#include <algorithm>
#include <array>
#include <bit>

#include "dsp/CameraDSP.h"
#include "dsp/Words.h"
#include "request/Log.h"

namespace frame = dsp::frame;

namespace {

/** The area's text is a stream of 17 bytes, low bit first: nine rows of 15 cells, and a spare bit. */
constexpr size_t kTextBytes = 17;
constexpr size_t kRows = 9;
constexpr size_t kColumns = 15;
constexpr size_t kGridBytes = 2 * kRows;

/** The picture grid: two bytes a row, columns 0 to 7 and 8 to 14. */
using Grid = std::array<uint8_t, kGridBytes>;

/** Cells of a row, of its low and its high byte, that lie in the picture when it is 4:3. */
constexpr uint8_t kNarrowLow = 0xFC;
constexpr uint8_t kNarrowHigh = 0x1F;

Grid gridOf(const std::array<uint8_t, kTextBytes>& stream) {
  Grid grid{};
  for (size_t bit = 0; bit < kRows * kColumns; ++bit) {
    if ((stream[bit / 8] >> bit % 8 & 1) == 0) continue;
    const size_t column = bit % kColumns;
    grid[bit / kColumns * 2 + column / 8] |= static_cast<uint8_t>(1U << column % 8);
  }
  return grid;
}

/** Cells that are set within the picture. */
int32_t cellsIn(const Grid& grid, bool isNarrow) {
  int32_t count = 0;
  for (size_t i = 0; i < grid.size(); ++i) {
    const unsigned mask = !isNarrow ? 0xFF : i % 2 == 0 ? kNarrowLow : kNarrowHigh;
    count += std::popcount(grid[i] & mask);
  }
  return count;
}

}  // namespace

int32_t CameraDSP::setBLC(const std::string& mode, bool sendflag) {
  const auto value = dsp::words::kBlc.find(mode);
  if (!value) {
    TMX_LOG(LOG_ERR, "blc out of range(%s)", mode.c_str());
    return dsp::kOutOfRange;
  }
  TMX_LOG(LOG_DEBUG, "set blc(%d):input(%s) ", *value, mode.c_str());
  if (m_apply(frame::kBlcMode, *value, camera_row::BLC, mode, sendflag) < 0) return dsp::kSendFailed;
  // Entering "manual" puts the area out; an area that is refused leaves the mode as it is.
  return setBLCArea(m_text(camera_row::BLC_AREA)) == dsp::kSendFailed ? dsp::kSendFailed : dsp::kDone;
}

int32_t CameraDSP::setBLCArea(const std::string& digits) {
  const bool isHex = std::ranges::all_of(digits, [this](char c) { return convAtoi(c) >= 0; });
  if (digits.size() != 2 * kTextBytes || !isHex) {
    TMX_LOG(LOG_ERR, "blc area not understood(%s)", digits.c_str());
    return dsp::kNotUnderstood;
  }
  std::array<uint8_t, kTextBytes> stream;
  for (size_t i = 0; i < stream.size(); ++i) {
    stream[i] = static_cast<uint8_t>(convAtoi(digits[2 * i]) << 4 | convAtoi(digits[2 * i + 1]));
  }
  const Grid grid = gridOf(stream);
  if (cellsIn(grid, m_aspect == 1) == 0) {
    TMX_LOG(LOG_ERR, "blc area is empty(%s)", digits.c_str());
    return dsp::kNotUnderstood;
  }
  if (m_text(camera_row::BLC) == "manual" && m_sendBlcArea(grid) < 0) return dsp::kSendFailed;
  if (digits == m_text(camera_row::BLC_AREA)) return dsp::kUnchanged;
  m_store(camera_row::BLC_AREA, digits);
  return dsp::kDone;
}

int32_t CameraDSP::m_sendBlcArea(std::span<const uint8_t> grid) {
  const dsp::Field data = frame::kBlcAreaData;
  dsp::Frame& f = m_frames.at(data.address);
  for (uint8_t page = 0; !grid.empty(); ++page) {
    const auto part = grid.first(std::min<size_t>(data.width, grid.size()));
    f = dsp::blankFrame(data.address);
    dsp::put(f, frame::kBlcAreaPage, page);
    std::ranges::copy(part, f.begin() + data.position);
    if (sendToCameradsp(f, true) < 0) return dsp::kSendFailed;
    grid = grid.subspan(part.size());
  }
  return dsp::kDone;
}
