#include "decoders/systemconfig/summary.h"

#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

#include <algorithm>
#include <cstring>

namespace mpuevent::systemconfig {

namespace {

constexpr int longestSummary = 62;

}  // namespace

std::size_t summaryLength(RecordView text, int limit) {
  const int longest = limit == 0 ? longestSummary : std::min(limit, longestSummary);
  std::size_t lastBlank = 0;
  // Character by character: what lies behind the one that ends the summary may not be readable.
  for (std::size_t length = 0; static_cast<int>(length) <= longest; ++length) {
    switch (text.u8(length)) {
      case '\0':
      case '.':
      case ';':
        return length;
      case ':':
        // "name():" keeps the opening parenthesis and loses the closing one.
        if (length >= 2 && text.u8(length - 2) == '(' && text.u8(length - 1) == ')') {
          return length - 1;
        }
        break;
      case ' ':
      case '\t':
      case '\n':
        lastBlank = length;
        break;
      default:
        break;
    }
  }
  return lastBlank;
}

void copySummary(char* destination, std::string_view summary) {
  if (destination == nullptr) return;
  if (!summary.empty()) std::memmove(destination, summary.data(), summary.size());
  destination[summary.size()] = '\0';
}

}  // namespace mpuevent::systemconfig

namespace Pegasus {

void SCC_copySummarized(char* dst, char* src, int limit) {
  using namespace mpuevent::systemconfig;
  const auto text = mpuevent::RecordView::unbounded(src);
  copySummary(dst, text.bytes(0, summaryLength(text, limit)));
}

}  // namespace Pegasus
