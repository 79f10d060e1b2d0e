#include "cli/Session.h"

#include <cstdio>

namespace tmx {

int Session::run(const std::vector<Item>& items, const AnswerSink& sink) const {
  if (!isSendable(items)) return kExitUsage;
  int result = kExitOk;
  for (const std::vector<Item>& request : splitRequests(items)) {
    const Reply reply = m_client.exchange(m_options.user, LineEnd::kPlain, requestText(request));
    if (reply.outcome != Outcome::kAnswered) {
      const char* what = reply.outcome == Outcome::kNoConnection ? "no daemon at " : "";
      std::fprintf(stderr, "tmxctl: %s%s: %s\n", what, m_client.socket().c_str(), reply.text.c_str());
      return kExitNoConnection;
    }
    const std::vector<Answer> answers = parseAnswers(request, reply.text);
    for (const Answer& answer : answers) {
      if (!answer.accepted()) result = kExitRefused;
    }
    sink(answers);
  }
  return result;
}

std::string Session::shown(const std::string& wire) const { return m_options.isRaw ? wire : unescapeValue(wire); }

std::string Session::sent(std::string_view typed) const {
  return m_options.isRaw && !typed.empty() ? std::string(typed) : escapeValue(typed);
}

bool Session::isSendable(const std::vector<Item>& items) const {
  for (const Item& item : items) {
    const char* fault = faultOf(item);
    if (fault == nullptr) continue;
    std::fprintf(stderr, "tmxctl: \"%.60s\": %s\n", item.text().c_str(), fault);
    return false;
  }
  return true;
}

}  // namespace tmx
