#include "choosing/Values.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "event/Utf8.h"

namespace mpuevent::tool {

namespace {

using log::NumberRange;

[[noreturn]] void refuse(std::string_view value, std::string_view reason) {
  throw std::invalid_argument("'" + std::string(value) + "' " + std::string(reason));
}

std::optional<std::uint32_t> parseNumber(std::string_view text) {
  const bool hex = text.starts_with("0x") || text.starts_with("0X");
  if (hex) text.remove_prefix(2);
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, hex ? 16 : 10);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

NumberRange parseRange(std::string_view text) {
  std::size_t at = text.find("..");
  std::size_t width = 2;
  if (at == std::string_view::npos) {
    at = text.find('-');
    width = 1;
  }
  const std::optional<std::uint32_t> first = parseNumber(text.substr(0, at));
  const std::optional<std::uint32_t> last =
      at == std::string_view::npos ? first : parseNumber(text.substr(at + width));
  if (!first || !last) refuse(text, "is neither a number of 32 bits nor a range of them");
  if (*first > *last) refuse(text, "ends before it begins");
  return {*first, *last};
}

std::vector<std::string_view> items(const std::vector<std::string>& values) {
  std::vector<std::string_view> found;
  for (std::string_view rest : values) {
    for (;;) {
      const std::size_t comma = rest.find(',');
      found.push_back(rest.substr(0, comma));
      if (comma == std::string_view::npos) break;
      rest.remove_prefix(comma + 1);
    }
  }
  return found;
}

bool isUtf8(std::string_view bytes) {
  std::uint32_t character = 0;
  for (std::size_t at = 0; at < bytes.size();) {
    if (!readUtf8(bytes, at, character)) return false;
  }
  return true;
}

// The text with a byte for each character, if that can be.
std::optional<std::string> latin1(std::string_view utf8) {
  std::string bytes;
  std::uint32_t character = 0;
  for (std::size_t at = 0; at < utf8.size();) {
    if (!readUtf8(utf8, at, character) || character > 0xFF) return std::nullopt;
    bytes += static_cast<char>(character);
  }
  return bytes;
}

}  // namespace

std::vector<NumberRange> parseRanges(const std::vector<std::string>& values) {
  std::vector<NumberRange> ranges;
  for (const std::string_view item : items(values)) ranges.push_back(parseRange(item));
  return ranges;
}

std::vector<NumberRange> parseCodes(const std::vector<std::string>& values, const Words& words) {
  std::vector<NumberRange> ranges;
  for (const std::string_view item : items(values)) {
    if (!item.empty() && item.front() >= '0' && item.front() <= '9') {
      ranges.push_back(parseRange(item));
      continue;
    }
    const std::vector<std::uint8_t> codes = words.codesOf(item);
    if (codes.empty()) refuse(item, "is neither a number nor one of " + words.list());
    for (const std::uint8_t code : codes) ranges.push_back({code, code});
  }
  return ranges;
}

std::vector<std::string> serialBytes(const std::vector<std::string>& values) {
  std::vector<std::string> all = values;
  for (const std::string& value : values) {
    // Bytes that are no UTF-8 are shown as Latin-1.
    const std::optional<std::string> bytes = latin1(value);
    if (bytes && !isUtf8(*bytes)) all.push_back(*bytes);
  }
  return all;
}

DateSpan parseTime(std::string_view text, std::optional<Moment> epoch) {
  if (const std::optional<std::uint32_t> count = parseNumber(text)) return {*count, *count};
  const std::optional<DateSpan> date = parseDate(text);
  if (!date) refuse(text, "is neither a timestamp nor YYYY-MM-DD[THH:MM:SS[Z]]");
  if (!epoch) refuse(text, "is a date: --epoch must tell what timestamp 0 stands for");
  return {date->first - *epoch, date->last - *epoch};
}

std::vector<NumberRange> timesFrom(Moment first) {
  if (first > UINT32_MAX) return {};
  return {
      {static_cast<std::uint32_t>(std::max<Moment>(first, 0)), UINT32_MAX}
  };
}

std::vector<NumberRange> timesUpTo(Moment last) {
  if (last < 0) return {};
  return {
      {0, static_cast<std::uint32_t>(std::min<Moment>(last, UINT32_MAX))}
  };
}

}  // namespace mpuevent::tool
