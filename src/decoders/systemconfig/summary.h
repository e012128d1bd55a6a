#ifndef DECODERS_SYSTEMCONFIG_SUMMARY_H
#define DECODERS_SYSTEMCONFIG_SUMMARY_H

#include <string_view>

namespace mpuevent::systemconfig {

/// The part of a text that `SCC_copySummarized` copies. The text holds no NUL.
std::string_view summaryOf(std::string_view text, int limit = 0);

/// Copies the summary and a NUL to a caller's buffer, which may be null.
void copySummary(char* destination, std::string_view summary);

}  // namespace mpuevent::systemconfig

#endif
