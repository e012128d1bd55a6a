#include "decoders/systemconfig/summary.h"

#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

#include <algorithm>
#include <cstring>

#include "event/Text.h"

namespace mpuevent::systemconfig {

namespace {

constexpr int longestSummary = 62;

}  // namespace

std::string_view summaryOf(std::string_view text, int limit) {
  const int longest = limit == 0 ? longestSummary : std::min(limit, longestSummary);
  std::string_view upToLastBlank;
  for (int length = 0; length <= longest; ++length) {
    const std::string_view before = text.substr(0, static_cast<std::size_t>(length));
    if (before.size() == text.size()) return text;
    switch (text[before.size()]) {
      case '.':
      case ';':
        return before;
      case ':':
        // "name():" keeps the opening parenthesis and loses the closing one.
        if (before.ends_with("()")) return before.substr(0, before.size() - 1);
        break;
      case ' ':
      case '\t':
      case '\n':
        upToLastBlank = before;
        break;
      default:
        break;
    }
  }
  return upToLastBlank;
}

void copySummary(char* destination, std::string_view summary) {
  if (destination == nullptr) return;
  if (!summary.empty()) std::memmove(destination, summary.data(), summary.size());
  destination[summary.size()] = '\0';
}

}  // namespace mpuevent::systemconfig

namespace Pegasus {

void SCC_copySummarized(char* dst, char* src, int limit) {
  mpuevent::systemconfig::copySummary(
      dst, mpuevent::systemconfig::summaryOf(mpuevent::viewOf(src), limit));
}

}  // namespace Pegasus
