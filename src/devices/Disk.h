#pragma once

#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "devices/CStorageApiBase.h"

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

/** A start is answered at once; a read tells how far it has come. */
struct CDisk::CInitialize : CStorageApiBase {
  static int32_t start(Request& request);
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.commands = {{{"start", start}}}, .fetch = fetch};
};

struct CDisk::CMount : CStorageApiBase {
  static int32_t mount(Request& request);
  static int32_t unmount(Request& request);
  static constexpr Rule rule{.commands = {{{"on", mount}, {"off", unmount}}}};
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

// By the files that the recording makes.
struct CDisk::CRec : CStorageApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

/** "1" for a failed write, "2" for a full card, "1|2", or "0". */
struct CDisk::CErrcode : CStorageApiBase {
  static int32_t fetch(const Request& request, std::string& text);
  static constexpr Rule rule{.fetch = fetch};
};

}  // namespace Storage
