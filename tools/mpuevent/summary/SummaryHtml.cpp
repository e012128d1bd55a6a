#include <algorithm>
#include <array>

#include "forms/Numbers.h"
#include "summary/HtmlCharts.h"
#include "summary/HtmlStyle.h"
#include "summary/HtmlText.h"
#include "summary/SummaryForms.h"
#include "summary/SummaryWords.h"

namespace mpuevent::tool {

namespace {

// A page stays small whatever the logs hold, so that it can be mailed.
constexpr std::size_t kMostLogs = 24;
constexpr std::size_t kMostGaps = 100;  // of all logs
constexpr std::size_t kMostSources = 40;
constexpr std::size_t kMostKinds = 20;
constexpr std::size_t kMostFiles = 8;
constexpr std::size_t kMostDamage = 8;  // of a file
constexpr std::size_t kName = 64;
constexpr std::size_t kLine = 120;
constexpr std::array<std::string_view, 4> kClasses = {"e", "w", "i", "o"};
constexpr std::array<std::string_view, 4> kSeverities = {"Errors", "Warnings", "Informational",
                                                         "Other"};

/// The summary as one page that needs nothing else.
class SummaryHtml {
 public:
  SummaryHtml(TextBuffer& to, const Summary& summary, const ChoosingOptions& choosing)
      : to_(to), summary_(summary), choosing_(choosing) {}

  void write() {
    to_ += kHtmlHead;
    to_ += "<title>Summary of event logs</title>\n</head>\n<body>\n";
    to_ += kHtmlHatch;
    to_ += "<main>\n";
    head();
    if (summary_.events.total() != 0) {
      time();
      logs();
      sources();
      kinds();
      lastErrors();
    }
    damage();
    to_ += "</main>\n</body>\n</html>\n";
  }

 private:
  void text(std::string_view utf8, std::size_t width = kLine) { appendHtmlText(to_, utf8, width); }
  void element(std::string_view tag, std::string_view utf8, std::size_t width = kLine) {
    to_ += '<';
    to_ += tag;
    to_ += '>';
    text(utf8, width);
    to_ += "</";
    to_ += tag.substr(0, tag.find(' '));
    to_ += ">\n";
  }
  void soft(std::string_view utf8) { element("div class=\"soft\"", utf8); }
  void more(std::uint64_t count, std::string_view what) {
    if (count != 0) soft("and " + std::to_string(count) + " more " + std::string(what));
  }
  void begin(std::string_view heading) {
    to_ += "<section>\n";
    element("h2", heading);
  }
  void beginDetails(std::string_view heading, bool open) {
    to_ += open ? "<details open>\n" : "<details>\n";
    element("summary", heading);
  }
  std::string span(const TimeSpan& time) const {
    const std::string first = timeText(time.first, choosing_);
    return time.first == time.last ? first : first + " to " + timeText(time.last, choosing_);
  }

  void tile(std::string_view severity, std::uint64_t count, std::string_view what) {
    to_ += "<div class=\"tile ";
    to_ += severity;
    to_ += "\"><b>";
    appendDecimal(to_, count);
    to_ += "</b>";
    text(what);
    to_ += "</div>\n";
  }

  void head() {
    to_ += "<h1>";
    const std::uint64_t files = summary_.files.size() + summary_.leftOut.files;
    text(files == 1 && !summary_.files.empty() ? fileText(summary_.files.front().name)
                                               : counted(files, "event log"),
         kName);
    to_ += "</h1>\n";
    const log::Accounting& bytes = summary_.accounting;
    std::string line =
        std::to_string(bytes.eventBytes) + " of " + counted(bytes.bytes(), "byte") + " decoded";
    if (summary_.events.total() != 0) line = span(summary_.time) + " · " + line;
    soft(line);
    to_ += "<div class=\"tiles\">\n";
    tile("", summary_.events.total(), "Events");
    for (std::size_t severity = 0; severity < kSeverities.size(); ++severity) {
      if (severity == other && summary_.events.of[other] == 0) continue;
      tile(kClasses[severity], summary_.events.of[severity], kSeverities[severity]);
    }
    std::uint64_t missing = 0;
    for (const LogSummary& log : summary_.logs) missing += log.sequence.missing();
    tile("", missing, "Ids missing");
    to_ += "</div>\n";
  }

  void time() {
    begin("Time");
    std::array<std::uint64_t, 4> highest{};
    for (std::size_t severity = 0; severity < highest.size(); ++severity) {
      highest[severity] = mpuevent::tool::highest(summary_.axis, Severity{severity});
    }
    for (const TimeLanes& lanes : summary_.axis.controllers) {
      element("h3", controllerText(lanes.controllerSerial, lanes.controllerSlot), kName + 20);
      to_ += "<div class=\"time\"><div class=\"names\">";
      for (std::size_t severity = 0; severity < highest.size(); ++severity) {
        if (highest[severity] != 0) element("span", kSeverities[severity]);
      }
      to_ += "</div>\n";
      appendLanes(to_, lanes, highest);
      to_ += "<div class=\"ends soft\">";
      element("span", timeText(summary_.time.first, choosing_));
      element("span", timeText(summary_.time.last, choosing_));
      to_ += "</div></div>\n";
    }
    to_ +=
        "<p class=\"soft\"><svg class=\"key\" aria-hidden=\"true\"><rect class=\"hole\" "
        "width=\"22\" height=\"10\"/></svg>ids of the sequence are missing; the tallest of a "
        "severity fills its lane</p>\n</section>\n";
  }

  void logs() {
    begin("Logs");
    const std::size_t shown = std::min(summary_.logs.size(), kMostLogs);
    std::uint64_t gaps = 0;
    for (std::size_t at = 0; at < shown; ++at) {
      const LogSummary& log = summary_.logs[at];
      element("h3", logText(log), 2 * kName);
      soft(counted(log.events, "event") + ", ids " + std::to_string(log.sequence.first()) + " to " +
           std::to_string(log.sequence.last()) + ", " + sequenceText(log.sequence));
    }
    more(summary_.logs.size() - shown, "logs");
    if (summary_.leftOut.logEvents != 0) {
      soft("other logs: " + counted(summary_.leftOut.logEvents, "event"));
    }
    to_ += "</section>\n";
    for (const LogSummary& log : summary_.logs) gaps += log.sequence.gapCount();
    if (gaps != 0) this->gaps(gaps);
  }

  void gaps(std::uint64_t count) {
    beginDetails(counted(count, "gap") + " in the sequence", false);
    to_ += "<ol>\n";
    std::size_t shown = 0;
    for (const LogSummary& log : summary_.logs) {
      for (const SequenceGap& gap : log.sequence.gaps()) {
        if (shown == kMostGaps) break;
        ++shown;
        to_ += "<li><b>";
        appendDecimal(to_, gap.missing());
        to_ += "</b><div>";
        text("missing after " + std::to_string(gap.after) + ", before " +
             std::to_string(gap.before));
        soft(timeText(gap.afterTimestamp, choosing_) + " to " +
             timeText(gap.beforeTimestamp, choosing_) + ", slot " +
             std::to_string(log.controllerSlot) + ", log " + std::to_string(log.logInstance));
        to_ += "</div></li>\n";
      }
    }
    to_ += "</ol>\n";
    more(count - shown, "gaps");
    to_ += "</details>\n";
  }

  void sources() {
    begin("Modules");
    to_ +=
        "<table><tr><th>Module</th><th>Errors</th><th>Warn.</th><th>Inform.</th>"
        "<th>Events</th></tr>\n";
    const std::size_t shown = std::min(summary_.sources.size(), kMostSources);
    std::uint64_t most = 1;
    for (const SourceSummary& source : summary_.sources) {
      most = std::max(most, source.events.total());
    }
    for (std::size_t at = 0; at < shown; ++at) source(summary_.sources[at], most);
    to_ += "</table>\n";
    more(summary_.sources.size() - shown, "modules");
    to_ += "</section>\n";
  }

  void source(const SourceSummary& source, std::uint64_t most) {
    to_ += "<tr><td>";
    text(source.name + " (" + std::to_string(source.code) + ')', kName);
    if (!source.hasDecoder()) to_ += " <span class=\"tag\">no decoder</span>";
    to_ += "<div class=\"bar\">";
    for (std::size_t severity = 0; severity < kClasses.size(); ++severity) {
      const std::uint64_t count = source.events.of[severity];
      if (count == 0) continue;
      to_ += "<i class=\"";
      to_ += kClasses[severity];
      to_ += "\" style=\"width:";
      appendDecimal(to_, std::max<std::uint64_t>(count * 100 / most, 1));
      to_ += "%\"></i>";
    }
    to_ += "</div>";
    if (source.hasDecoder() && !source.undecodedCodes.empty()) {
      soft("no decoder knows event code " + codesText(source.undecodedCodes));
    }
    to_ += "</td>";
    for (const std::uint64_t count : {source.events.of[error], source.events.of[warning],
                                      source.events.of[informational], source.events.total()}) {
      to_ += "<td>";
      appendDecimal(to_, count);
      to_ += "</td>";
    }
    to_ += "</tr>\n";
  }

  void kinds() {
    beginDetails("Most frequent", true);
    to_ += "<ol>\n";
    const std::size_t shown = std::min(summary_.kinds.size(), kMostKinds);
    for (std::size_t at = 0; at < shown; ++at) {
      const KindSummary& kind = summary_.kinds[at];
      to_ += "<li><b>";
      appendDecimal(to_, kind.events);
      to_ += "</b><div>";
      text(kindText(kind.source, kind.eventId, kind.summary));
      soft(span(kind.time));
      to_ += "</div></li>\n";
    }
    to_ += "</ol>\n";
    const auto once = static_cast<std::uint64_t>(
        std::count_if(summary_.kinds.begin(), summary_.kinds.end(),
                      [](const KindSummary& kind) { return kind.events == 1; }));
    more(summary_.kinds.size() - shown, "kinds");
    if (once != 0) soft(counted(once, "kind") + " seen once");
    if (summary_.leftOut.kindEvents != 0) {
      soft("not told apart: " + counted(summary_.leftOut.kindEvents, "event"));
    }
    to_ += "</details>\n";
  }

  void lastErrors() {
    if (summary_.lastErrors.empty()) return;
    beginDetails("Last errors", true);
    to_ += "<ol>\n";
    for (const ErrorSummary& error : summary_.lastErrors) {
      to_ += "<li class=\"plain\"><div>";
      text(kindText(error.source, error.eventId, error.summary));
      TextBuffer place;
      appendHex(place, error.offset);
      soft(timeText(error.timestamp, choosing_) + ", id " + std::to_string(error.sequenceId) +
           ", offset " + std::string(place.view()) + ", " +
           controllerText(error.controllerSerial, error.controllerSlot));
      to_ += "</div></li>\n";
    }
    to_ += "</ol>\n</details>\n";
  }

  void damage() {
    begin("Damage and padding");
    std::size_t found = 0;
    for (const FileSummary& file : summary_.files) {
      if (file.damage.empty() && file.accounting.paddingBytes == 0) continue;
      if (++found > kMostFiles) continue;
      element("h3", fileText(file.name), kName);
      appendDamageStrip(to_, file);
      soft(std::to_string(file.accounting.skippedBytes) + " bytes skipped, " +
           std::to_string(file.accounting.paddingBytes) + " padding");
      const std::size_t shown = std::min(file.damage.size(), kMostDamage);
      for (std::size_t at = 0; at < shown; ++at) {
        TextBuffer place;
        appendHex(place, file.damage[at].offset);
        element("div", std::string(place.view()) + ": " + describe(file.damage[at]));
      }
      more(file.damage.size() - shown + file.moreDamage, "places");
    }
    if (found == 0) soft("none");
    if (found > kMostFiles) more(found - kMostFiles, "files");
    to_ += "</section>\n";
  }

  static std::string logText(const LogSummary& log) {
    return fitted(log.enclosureSerial, kName / 2) + " · " +
           controllerText(fitted(log.controllerSerial, kName / 2), log.controllerSlot) + " · log " +
           std::to_string(log.logInstance);
  }

  TextBuffer& to_;
  const Summary& summary_;
  const ChoosingOptions& choosing_;
};

}  // namespace

void appendSummaryHtml(TextBuffer& to, const Summary& summary, const ChoosingOptions& choosing) {
  SummaryHtml(to, summary, choosing).write();
}

}  // namespace mpuevent::tool
