#include "Dates.h"

#include <algorithm>
#include <chrono>

namespace mpuevent::tool {

namespace {

constexpr Moment kMinute = 60;
constexpr Moment kHour = 60 * kMinute;
constexpr Moment kDay = 24 * kHour;

constexpr std::string_view kDatePattern = "9999-99-99";
constexpr std::string_view kTimePattern = "T99:99:99";

bool looksLike(std::string_view text, std::string_view pattern) {
  return std::equal(
      text.begin(), text.end(), pattern.begin(), pattern.end(),
      [](char c, char wanted) { return wanted == '9' ? c >= '0' && c <= '9' : c == wanted; });
}

int digitsAt(std::string_view text, std::size_t at, std::size_t count) {
  int number = 0;
  for (const char digit : text.substr(at, count)) number = number * 10 + (digit - '0');
  return number;
}

std::optional<Moment> parseDay(std::string_view text) {
  using namespace std::chrono;
  if (!looksLike(text, kDatePattern)) return std::nullopt;
  const year_month_day date{year(digitsAt(text, 0, 4)),
                            month(static_cast<unsigned>(digitsAt(text, 5, 2))),
                            day(static_cast<unsigned>(digitsAt(text, 8, 2)))};
  if (!date.ok()) return std::nullopt;
  return sys_days(date).time_since_epoch().count() * kDay;
}

std::optional<Moment> parseTimeOfDay(std::string_view text) {
  if (!looksLike(text, kTimePattern)) return std::nullopt;
  const int hour = digitsAt(text, 1, 2);
  const int minute = digitsAt(text, 4, 2);
  const int second = digitsAt(text, 7, 2);
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return hour * kHour + minute * kMinute + second;
}

void appendDigits(TextBuffer& to, Moment number, int count) {
  char* const place = to.reserve(static_cast<std::size_t>(count));
  for (int at = count; at-- > 0; number /= 10) place[at] = static_cast<char>('0' + number % 10);
  to.advanceTo(place + count);
}

}  // namespace

std::optional<DateSpan> parseDate(std::string_view text) {
  const std::optional<Moment> day = parseDay(text.substr(0, kDatePattern.size()));
  if (!day) return std::nullopt;
  text.remove_prefix(kDatePattern.size());
  if (text.empty()) return DateSpan{*day, *day + kDay - 1};
  if (text.back() == 'Z') text.remove_suffix(1);
  const std::optional<Moment> time = parseTimeOfDay(text);
  if (!time) return std::nullopt;
  return DateSpan{*day + *time, *day + *time};
}

std::optional<Moment> parseEpoch(std::string_view text) {
  if (text == "unix") return 0;
  const std::optional<DateSpan> date = parseDate(text);
  if (!date || date->first + UINT32_MAX > parseDate("9999-12-31")->last) return std::nullopt;
  return date->first;
}

void appendDate(TextBuffer& to, Moment moment) {
  using namespace std::chrono;
  const sys_seconds time{seconds(moment)};
  const sys_days days = floor<std::chrono::days>(time);
  const year_month_day date(days);
  const Moment second = (time - days).count();
  appendDigits(to, static_cast<int>(date.year()), 4);
  to += '-';
  appendDigits(to, static_cast<unsigned>(date.month()), 2);
  to += '-';
  appendDigits(to, static_cast<unsigned>(date.day()), 2);
  to += 'T';
  appendDigits(to, second / kHour, 2);
  to += ':';
  appendDigits(to, second % kHour / kMinute, 2);
  to += ':';
  appendDigits(to, second % kMinute, 2);
  to += 'Z';
}

}  // namespace mpuevent::tool
