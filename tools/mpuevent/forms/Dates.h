#ifndef MPUEVENT_TOOL_DATES_H
#define MPUEVENT_TOOL_DATES_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "TextBuffer.h"

namespace mpuevent::tool {

/// Seconds since 1970-01-01T00:00:00Z, leap seconds not counted.
using Moment = std::int64_t;

/// The seconds that a date names, both ends included: one, or those of a day.
struct DateSpan {
  Moment first;
  Moment last;
};

/// `YYYY-MM-DD` or `YYYY-MM-DDTHH:MM:SS`, with or without a Z; always UTC.
std::optional<DateSpan> parseDate(std::string_view text);

/// `unix`, or the date that a count of 0 stands for. Dates up to which 32 bits of seconds lead out
/// of the four digits of a year are none.
std::optional<Moment> parseEpoch(std::string_view text);

/// `YYYY-MM-DDTHH:MM:SSZ`
void appendDate(TextBuffer& to, Moment moment);

}  // namespace mpuevent::tool

#endif
