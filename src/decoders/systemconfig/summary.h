#ifndef DECODERS_SYSTEMCONFIG_SUMMARY_H
#define DECODERS_SYSTEMCONFIG_SUMMARY_H

#include <cstddef>
#include <string_view>

#include "event/RecordView.h"

namespace mpuevent::systemconfig {

/// How much of the text at the start of `text` `SCC_copySummarized` copies. No character behind
/// the one that decides it is read.
std::size_t summaryLength(RecordView text, int limit = 0);

/// Copies the summary and a NUL to a caller's buffer, which may be null.
void copySummary(char* destination, std::string_view summary);

}  // namespace mpuevent::systemconfig

#endif
