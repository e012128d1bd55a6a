#ifndef MPUEVENT_TOOL_SUMMARY_SUMMARYWORDS_H
#define MPUEVENT_TOOL_SUMMARY_SUMMARYWORDS_H

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "choosing/ChoosingOptions.h"
#include "forms/TextBuffer.h"
#include "forms/Utf8.h"
#include "summary/Summary.h"

namespace mpuevent::tool {

// What the forms of a summary for people say in the same words.

/// "1 gap", "2 gaps"
inline std::string counted(std::uint64_t count, std::string_view one, std::string_view several) {
  return std::to_string(count) + ' ' + std::string(count == 1 ? one : several);
}
inline std::string counted(std::uint64_t count, std::string_view noun) {
  return counted(count, noun, std::string(noun) + 's');
}

/// The timestamp, or the date that it stands for if that is known.
inline std::string timeText(std::uint32_t timestamp, const ChoosingOptions& choosing) {
  const std::optional<Moment> moment = choosing.timeOf(timestamp);
  if (!moment) return std::to_string(timestamp);
  TextBuffer date;
  appendDate(date, *moment);
  return std::string(date.view());
}

/// The text on one line, control characters made visible, of at most `width` characters.
inline std::string fitted(std::string_view utf8, std::size_t width) {
  TextBuffer visible;
  appendVisible(visible, utf8);
  const std::string_view text = visible.view();
  std::size_t count = 0;
  std::size_t cut = 0;  // before the last character that fits
  for (std::size_t at = 0; at < text.size(); ++at) {
    if ((static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) continue;
    if (++count == width) cut = at;
    if (count > width) return std::string(text.substr(0, cut)) + "…";
  }
  return std::string(text);
}

/// How many characters a text has on a terminal, combined and wide ones not looked at.
inline std::size_t widthOf(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

/// "I/O Mgr: VMH Task Event: Macro MQX Event"
inline std::string kindText(std::string_view source, std::string_view eventId,
                            std::string_view summary) {
  std::string text(source);
  for (const std::string_view part : {eventId, summary}) {
    if (part.empty()) continue;
    text += ": ";
    text += part;
  }
  return text;
}

inline std::string controllerText(std::string_view serial,
                                  const std::optional<std::uint32_t>& slot) {
  std::string text(serial);
  if (slot) text += (text.empty() ? "slot " : " slot ") + std::to_string(*slot);
  return text;
}

/// "2 gaps with 13 ids missing, 1 step back, 3 repeats", or "no gaps".
inline std::string sequenceText(const Sequence& sequence) {
  std::string text = sequence.gapCount() == 0 ? "no gaps"
                                              : counted(sequence.gapCount(), "gap") + " with " +
                                                    counted(sequence.missing(), "id") + " missing";
  if (sequence.stepsBack() != 0) {
    text += ", " + counted(sequence.stepsBack(), "step back", "steps back");
  }
  if (sequence.repeats() != 0) text += ", " + counted(sequence.repeats(), "repeat");
  return text;
}

/// "1, 5-7, 258"
inline std::string codesText(const std::vector<unsigned>& codes) {
  std::string text;
  for (std::size_t at = 0; at < codes.size();) {
    std::size_t end = at + 1;
    while (end < codes.size() && codes[end] == codes[end - 1] + 1) ++end;
    if (!text.empty()) text += ", ";
    text += std::to_string(codes[at]);
    if (end - at > 1) text += '-' + std::to_string(codes[end - 1]);
    at = end;
  }
  return text;
}

inline std::string fileText(const std::optional<std::string>& name) {
  return name ? *name : "standard input";
}

/// The highest count of a severity in a column, of all controllers.
inline std::uint64_t highest(const TimeAxis& axis, Severity severity) {
  std::uint64_t highest = 0;
  for (const TimeLanes& lanes : axis.controllers) {
    for (const TimeLanes::Column& column : lanes.columns) {
      highest = std::max(highest, column.events.of[severity]);
    }
  }
  return highest;
}

}  // namespace mpuevent::tool

#endif
