#pragma once

#include <cstdint>
#include <string>

#include "config/Rows.h"
#include "tree/CManBase.h"

/** Root `application`. */
class CApplicationMan : public CManBase {
 public:
  void build() override;
  void replay() override;

 private:
  // The replay, part by part.
  void m_replayMail();
  void m_replayEvent(int32_t event);
  void m_replayObject(const std::string& object);
  void m_replayFtp();

  void m_replayHost(const std::string& path, Row row);
  void m_replayText(const std::string& path, Row row);
};
