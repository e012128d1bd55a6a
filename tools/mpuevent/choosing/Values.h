#ifndef MPUEVENT_TOOL_VALUES_H
#define MPUEVENT_TOOL_VALUES_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "choosing/Words.h"
#include "forms/Dates.h"
#include "log/choosing/Choice.h"

namespace mpuevent::tool {

// What the values of the choosing options stand for. These throw `std::invalid_argument`, which
// tells what is wrong with a value.

/// Lists of N, N-M or N..M, with commas between them; decimal or 0x.
std::vector<log::NumberRange> parseRanges(const std::vector<std::string>& values);
/// The same, with words.
std::vector<log::NumberRange> parseCodes(const std::vector<std::string>& values,
                                         const Words& words);
/// The bytes that a record has for serial numbers that are shown so.
std::vector<std::string> serialBytes(const std::vector<std::string>& values);

/// The timestamps that a count or, if the epoch is known, a date stands for. They may be out of
/// what a record can hold.
DateSpan parseTime(std::string_view text, std::optional<Moment> epoch);
std::vector<log::NumberRange> timesFrom(Moment first);
std::vector<log::NumberRange> timesUpTo(Moment last);

}  // namespace mpuevent::tool

#endif
