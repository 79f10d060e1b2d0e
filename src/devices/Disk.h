#pragma once

#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "devices/CStorageApiBase.h"
#include "devices/CardDaemon.h"

namespace Storage {

/** The slot of the memory card, which a daemon of its own owns (CardDaemon.h). */
struct CDisk : CStorageApiBase {
  static constexpr Selector selector{.available = has<Feature::SDCARD>,
                                     .empty = status::kCommandNotFound,
                                     .takes = SelectorNumber{.low = 1, .high = 1}};
  struct CStatus;
  struct CInitialize;
  struct CErecmode;
  struct CSize;
  struct CCheck;
  struct CRec;
  struct CErrcode;
  struct CMount;
};

/** Whether the card is used, which the recorder hears; shown together with the state of the card. */
struct CDisk::CStatus : CStorageApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{
      .accepts = Words{"off", "on"},
      .place = sd_card_row::SDCARD_STATUS,
      .peer = peer::recorderText(0x411000),
      .fetch = fetch,
      .keeps = Keeps::WriteThrough,
  };
};

/** Commands that the card's daemon gets; one that is away is no failure. */
[[nodiscard]] int32_t tellCard(const Peer& peer, Request& request);
/** A state of the card's daemon, whose number is given. */
[[nodiscard]] int32_t askCard(const Peer& peer, const Request& request, std::string& text);

/** A start is answered at once; a read tells how far it has come. */
struct CDisk::CInitialize : CStorageApiBase {
  static constexpr Words states{"off", "not_initialized", "on"};
  static constexpr Rule rule{
      .accepts = Words{Word{"start", CardDaemon::kInitialize}},
      .peer = {.tell = tellCard, .ask = askCard, .id = CardDaemon::kInitializeState},
      .shows = {.words = &states},
  };
};

struct CDisk::CMount : CStorageApiBase {
  static constexpr Rule rule{.accepts = Words{Word{"on", CardDaemon::kMount}, Word{"off", CardDaemon::kUnmount}},
                             .peer = {.tell = tellCard}};
};

struct CDisk::CErecmode : CStorageApiBase {
  static constexpr Rule rule{
      .accepts = Words{"off", "on"}, .place = sd_card_row::SDCARD_ERECMODE, .keeps = Keeps::WriteThrough};
};

struct CDisk::CSize : CStorageApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

/** A read that takes as long as the test of the card: "1886M,ok". */
struct CDisk::CCheck : CStorageApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

/** Whether there is the file of the peer's path, 1 or 0. */
[[nodiscard]] int32_t askMarker(const Peer& peer, const Request& request, std::string& text);

/** Whether something is being recorded, by the file that is then there. */
struct CDisk::CRec : CStorageApiBase {
  static constexpr Words states{"off", "on"};
  static constexpr Rule rule{.peer = {.ask = askMarker, .path = "/tmp/sdrec_recording"}, .shows = {.words = &states}};
};

/** "1" for a failed write, "2" for a full card, "1|2", or "0". */
struct CDisk::CErrcode : CStorageApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

}  // namespace Storage
