#include "application/Object.h"

#include <algorithm>
#include <cctype>

#include "application/ParamChecker.h"
#include "encoder/StoredNumber.h"
#include "request/Log.h"
#include "service/Numbers.h"
#include "service/ParamPitcher.h"

namespace Application {
namespace {

namespace row = application_row;

constexpr int32_t kEncoders = 3;
constexpr int32_t kMostSeconds = 60;
constexpr uint32_t kFramerateId = 0x250500;
/** The objects from here on have one overwriting. */
constexpr int32_t kFirstShared = 8;
constexpr int32_t kObjects = 10;

int32_t objectOf(const Selectors& selectors) { return selectorNumber(selectors, CObject::kLayer, 1); }

std::string stored(const Selectors& selectors, Row of) {
  return Config::getInstance()->get(of, objectOf(selectors) - 1);
}

/** The encoder's number between the first brackets of a source; 0 where there is none. */
int32_t encoderOf(const std::string& source) {
  const size_t open = source.find('(');
  const size_t close = source.find(')');
  if (open == std::string::npos || close == std::string::npos || close < open) return 0;
  return parseNumber(source.substr(open + 1, close - open - 1)).value_or(0);
}

bool isEncoder(int32_t number) { return number >= 1 && number <= kEncoders; }

/** The rate of the encoder that the object records from; empty for a source that is none. */
std::string m_getEncodeFrameRate(const Selectors& selectors) {
  const std::string source = stored(selectors, row::APPLICATION_OBJECT_SOURCE);
  const int32_t encoder = encoderOf(source);
  std::string rate = Config::getInstance()->getEncodeConfig(encoder - 1, encode_row::FRAME_RATE);
  TMX_LOG(LOG_DEBUG, "source = %s // encodenum = %ld // encodeFrameRate = %s", source.c_str(),
          static_cast<long>(encoder), rate.c_str());
  return rate;
}

/** Whether the encoder reaches the rate, which any slow rate is below. A text that is no number counts as 0. */
bool m_checkEncodeFrameRate(const Selectors& selectors, const std::string& rate) {
  const std::string encodeRate = m_getEncodeFrameRate(selectors);
  TMX_LOG(LOG_DEBUG, "nAttr = %ld // rate = %s // encodeFrameRate = %s", static_cast<long>(objectOf(selectors)),
          rate.c_str(), encodeRate.c_str());
  const double reached = storedDouble(encodeRate);
  const double wanted = storedDouble(rate);
  TMX_LOG(LOG_DEBUG, "getrate = %f // setrate = %f", reached, wanted);
  return reached >= wanted;
}

}  // namespace

uint32_t ofObject(const Selectors& selectors) { return static_cast<uint32_t>(objectOf(selectors)) << 12; }

int32_t CObject::CSource::check(Request& request) {
  TMX_LOG(LOG_DEBUG, "source in");
  if (!request.value.starts_with("encode")) return -status::kNotUnderstood;
  request.number = encoderOf(request.value);
  return isEncoder(request.number) ? 0 : -status::kInvalidRange;
}

/** Only a source that is none has a size here: that of the table with the number itself. */
int32_t CObject::CFramesize::fetch(const Request& request, std::string& text) {
  const int32_t encoder = encoderOf(stored(request.selectors, row::APPLICATION_OBJECT_SOURCE));
  if (isEncoder(encoder)) return -status::kInternalError;
  text = Config::getInstance()->getEncodeConfig(encoder, encode_row::FRAME_SIZE);
  return 0;
}

int32_t CObject::CFramesize::act(Request& request) {
  std::string size;
  if (const int32_t result = fetch(request, size); result < 0) return result;
  if (request.value == size) return 0;
  return Config::isFramesize(request.value) == 1 ? -status::kMethodNotAllowed : -status::kNotUnderstood;
}

int32_t CObject::CFramerate::check(Request& request) {
  TMX_LOG(LOG_DEBUG, "framerate in");
  std::string rate;
  const int32_t refused = ParamChecker::normaliseFrameRate(RateLadder::Frames30, request.value, &rate);
  if (refused < 0) return refused;
  return m_checkEncodeFrameRate(request.selectors, rate) ? 0 : -status::kInvalidRange;
}

int32_t CObject::CFramerate::act(Request& request) {
  std::string rate;
  if (const int32_t result = ParamChecker::normaliseFrameRate(RateLadder::Frames30, request.value, &rate); result < 0) {
    return result;
  }
  const auto id = static_cast<int32_t>(kFramerateId + ofObject(request.selectors));
  TMX_LOG(LOG_DEBUG, "freamerate Regstor[nAttr-1] = %lx // strRate = %s /// strVal = %s ", static_cast<long>(id),
          rate.c_str(), request.value.c_str());
  const int32_t result = ParamPitcher().putString(id, rate);
  if (result == status::kOk) return 0;
  return result < 0 ? result : -status::kInternalError;
}

int32_t CObject::CFramerate::fetch(const Request& request, std::string& text) {
  const Cell cell = rule.place.cell(request.selectors);
  Config* config = Config::getInstance();
  text = config->get(cell.row, cell.table);
  TMX_LOG(LOG_DEBUG, "strVal = %s ", text.c_str());
  if (m_checkEncodeFrameRate(request.selectors, text)) return 0;
  text = m_getEncodeFrameRate(request.selectors);
  TMX_LOG(LOG_DEBUG, "strVal = %s ", text.c_str());
  config->set(cell.row, text, cell.table);
  return config->save(cell.row.family, cell.table) == Config::kDone ? 0 : -status::kInternalError;
}

int32_t checkSeconds(Request& request, uint32_t id, Row other) {
  const bool isPure = std::ranges::all_of(request.value, [](unsigned char c) { return std::isdigit(c) != 0; });
  const auto number = parseNumber(request.value);
  if (!isPure || !number) return -status::kNotUnderstood;
  if (*number > kMostSeconds) return -status::kInvalidRange;
  if (*number == 0 && parseNumber(stored(request.selectors, other)) == 0) return -status::kMethodNotAllowed;
  request.number = *number;
  TMX_LOG(LOG_DEBUG, "prerec Regstor[nAttr-1] = %lx // num = %ld /// strVal = %s ",
          static_cast<long>(id + ofObject(request.selectors)), static_cast<long>(*number), request.value.c_str());
  return 0;
}

std::vector<Cell> CObject::COverwrite::CStatus::shared(const Selectors& selectors) {
  std::vector<Cell> cells;
  if (objectOf(selectors) < kFirstShared) return cells;
  for (int32_t object = kFirstShared; object <= kObjects; ++object)
    cells.push_back({row::APPLICATION_OBJECT_OVERWRITE_STATUS, object - 1});
  return cells;
}

}  // namespace Application
