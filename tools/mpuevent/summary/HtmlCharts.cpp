#include "summary/HtmlCharts.h"

#include <algorithm>

#include "forms/Numbers.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kWidth = 960;
constexpr std::size_t kLaneHeight = 40;
constexpr std::size_t kStripColumns = 240;
constexpr std::size_t kStripHeight = 16;
constexpr std::array<std::string_view, 4> kClasses = {"e", "w", "i", "o"};

void appendView(TextBuffer& to, std::string_view cssClass, std::size_t height) {
  to += "<svg class=\"";
  to += cssClass;
  to += "\" viewBox=\"0 0 ";
  appendDecimal(to, kWidth);
  to += ' ';
  appendDecimal(to, height);
  to += "\" height=\"";
  appendDecimal(to, height);
  to += "\" preserveAspectRatio=\"none\" aria-hidden=\"true\">";
}

// Rectangles over the whole height for runs of columns that are marked.
template <typename Marked>
void appendBands(TextBuffer& to, std::string_view cssClass, std::size_t columns, std::size_t height,
                 const Marked& marked) {
  to += "<path class=\"";
  to += cssClass;
  to += "\" d=\"";
  for (std::size_t at = 0; at < columns;) {
    std::size_t end = at;
    while (end < columns && marked(end)) ++end;
    if (end > at) {
      const std::size_t left = at * kWidth / columns;
      const std::size_t width = end * kWidth / columns - left;
      to += 'M';
      appendDecimal(to, left);
      to += " 0h";
      appendDecimal(to, width);
      to += 'v';
      appendDecimal(to, height);
      to += "h-";
      appendDecimal(to, width);
      to += 'z';
    }
    at = std::max(end, at + 1);
  }
  to += "\"/>";
}

// The outline of a lane that stands on `floor`, a step a column.
void appendLane(TextBuffer& to, const TimeLanes& lanes, std::size_t severity, std::size_t floor,
                std::uint64_t highest) {
  const std::size_t columns = lanes.columns.size();
  to += "<path class=\"";
  to += kClasses[severity];
  to += "\" d=\"M0 ";
  appendDecimal(to, floor);
  std::size_t height = 0;
  for (std::size_t at = 0; at <= columns; ++at) {
    const std::uint64_t count = at < columns ? lanes.columns[at].events.of[severity] : 0;
    // One event of many is seen, too.
    const auto next = static_cast<std::size_t>(
        count == 0 ? 0 : 3 + count * (kLaneHeight - 6 - 3) / std::max<std::uint64_t>(highest, 1));
    if (next == height) continue;
    to += 'H';
    appendDecimal(to, at * kWidth / columns);
    to += 'V';
    appendDecimal(to, floor - next);
    height = next;
  }
  to += "z\"/>";
}

}  // namespace

void appendLanes(TextBuffer& to, const TimeLanes& lanes,
                 const std::array<std::uint64_t, 4>& highest) {
  const auto count = static_cast<std::size_t>(
      std::count_if(highest.begin(), highest.end(), [](std::uint64_t one) { return one != 0; }));
  const std::size_t height = count * kLaneHeight;
  appendView(to, "lanes", height);
  appendBands(to, "hole", lanes.columns.size(), height,
              [&](std::size_t at) { return lanes.columns[at].hole; });
  std::size_t floor = 0;
  for (std::size_t severity = 0; severity < highest.size(); ++severity) {
    if (highest[severity] == 0) continue;
    floor += kLaneHeight;
    appendLane(to, lanes, severity, floor, highest[severity]);
  }
  to += "</svg>";
}

void appendDamageStrip(TextBuffer& to, const FileSummary& file) {
  const std::uint64_t bytes = std::max<std::uint64_t>(file.accounting.bytes(), 1);
  std::array<bool, kStripColumns> damaged{};
  const auto columnOf = [bytes](std::uint64_t offset) {
    const double place = static_cast<double>(offset) / static_cast<double>(bytes);
    return std::min(static_cast<std::size_t>(place * kStripColumns), kStripColumns - 1);
  };
  for (const log::Finding& damage : file.damage) {
    const std::uint64_t last = damage.offset + std::max<std::uint64_t>(damage.length, 1) - 1;
    std::fill(damaged.begin() + static_cast<std::ptrdiff_t>(columnOf(damage.offset)),
              damaged.begin() + static_cast<std::ptrdiff_t>(columnOf(last)) + 1, true);
  }
  const std::size_t padding = file.accounting.paddingBytes == 0
                                  ? kStripColumns
                                  : columnOf(bytes - file.accounting.paddingBytes);
  appendView(to, "strip", kStripHeight);
  appendBands(to, "pad", kStripColumns, kStripHeight,
              [&](std::size_t at) { return at >= padding; });
  appendBands(to, "e", kStripColumns, kStripHeight, [&](std::size_t at) { return damaged[at]; });
  to += "</svg>";
}

}  // namespace mpuevent::tool
