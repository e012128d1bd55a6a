#include <algorithm>
#include <array>

#include "forms/Numbers.h"
#include "summary/SummaryForms.h"
#include "summary/SummaryWords.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kLaneLabel = 16;
constexpr std::size_t kLaneWidth = 60;
constexpr std::size_t kMostGaps = 20;  // of a log
constexpr std::size_t kMostKinds = 15;
constexpr std::size_t kMostSeenOnce = 10;
constexpr std::size_t kMostDamage = 20;
constexpr std::size_t kMostFiles = 20;
constexpr std::array<std::string_view, 4> kSeverities = {"errors", "warnings", "informational",
                                                         "other"};
constexpr std::array<std::string_view, 9> kBlocks = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr std::string_view kHole = "░";

/// Several columns of the axis as one.
std::vector<TimeLanes::Column> narrowed(const std::vector<TimeLanes::Column>& columns) {
  std::vector<TimeLanes::Column> narrow(std::min(columns.size(), kLaneWidth));
  for (std::size_t at = 0; at < columns.size(); ++at) {
    TimeLanes::Column& to = narrow[at * narrow.size() / columns.size()];
    for (std::size_t severity = 0; severity < to.events.of.size(); ++severity) {
      to.events.of[severity] += columns[at].events.of[severity];
    }
    to.hole = to.hole || columns[at].hole;
  }
  return narrow;
}

/// The summary on pages of 80 columns.
class SummaryPage {
 public:
  SummaryPage(TextBuffer& to, const Summary& summary, const ChoosingOptions& choosing)
      : to_(to), summary_(summary), choosing_(choosing) {}

  void write() {
    head();
    if (summary_.events.total() != 0) {
      axis();
      logs();
      sources();
      kinds();
      lastErrors();
    }
    damage();
  }

 private:
  void line(std::string_view text, std::size_t indent = 0) {
    to_.fill(indent, ' ');
    to_ += fitted(text, kWidth - indent);
    to_ += '\n';
  }
  void heading(std::string_view text) {
    to_ += '\n';
    to_ += text;
    to_ += '\n';
  }
  void right(std::uint64_t number, std::size_t width) {
    const std::string text = std::to_string(number);
    to_.fill(width - std::min(width, text.size()), ' ');
    to_ += text;
  }
  void left(std::string_view text, std::size_t width) {
    const std::string fit = fitted(text, width);
    to_ += fit;
    to_.fill(width - widthOf(fit), ' ');
  }
  void more(std::uint64_t count, std::string_view what) {
    if (count != 0) line("... and " + std::to_string(count) + " more " + std::string(what), 4);
  }
  std::string span(std::uint32_t first, std::uint32_t last) const {
    const std::string from = timeText(first, choosing_);
    return first == last ? from : from + " to " + timeText(last, choosing_);
  }

  void head() {
    const log::Accounting& bytes = summary_.accounting;
    const std::uint64_t events = summary_.events.total();
    line(counted(summary_.files.size() + summary_.leftOut.files, "file") + ", " +
         counted(events, "event") + ", " + std::to_string(bytes.eventBytes) + " of " +
         counted(bytes.bytes(), "byte") + " decoded");
    if (events == 0) return;
    line(span(summary_.time.first, summary_.time.last));
    std::string types;
    for (std::size_t severity = 0; severity < kSeverities.size(); ++severity) {
      if (severity == other && summary_.events.of[other] == 0) break;
      if (!types.empty()) types += ", ";
      types += std::to_string(summary_.events.of[severity]) + ' ';
      types += kSeverities[severity];
    }
    line(types);
  }

  void axis() {
    heading("Time (the taller the more; " + std::string(kHole) +
            " ids of the sequence are missing)");
    std::vector<std::vector<TimeLanes::Column>> narrow;
    for (const TimeLanes& lanes : summary_.axis.controllers) {
      narrow.push_back(narrowed(lanes.columns));
      for (const TimeLanes::Column& column : narrow.back()) {
        for (std::size_t severity = 0; severity < kSeverities.size(); ++severity) {
          highest_[severity] = std::max(highest_[severity], column.events.of[severity]);
        }
      }
    }
    for (std::size_t at = 0; at < narrow.size(); ++at) {
      const TimeLanes& lanes = summary_.axis.controllers[at];
      line(controllerText(lanes.controllerSerial, lanes.controllerSlot), 2);
      for (std::size_t severity = 0; severity < kSeverities.size(); ++severity) {
        if (severity != other || highest_[other] != 0) lane(narrow[at], severity);
      }
    }
    const std::string first = timeText(summary_.time.first, choosing_);
    const std::string last = timeText(summary_.time.last, choosing_);
    const std::size_t width = narrow.empty() ? 0 : narrow.front().size();
    to_.fill(kLaneLabel + 2, ' ');
    to_ += first;
    if (first != last) {
      const std::size_t used = first.size() + last.size();
      to_.fill(width > used ? width - used : 1, ' ');
      to_ += last;
    }
    to_ += '\n';
  }

  void lane(const std::vector<TimeLanes::Column>& columns, std::size_t severity) {
    to_ += "    ";
    left(kSeverities[severity], kLaneLabel - 2);
    std::string lane;
    for (const TimeLanes::Column& column : columns) {
      const std::uint64_t count = column.events.of[severity];
      if (count == 0 && column.hole) {
        lane += kHole;
      } else {
        lane += kBlocks[static_cast<std::size_t>((count * 8 + highest_[severity] - 1) /
                                                 std::max<std::uint64_t>(highest_[severity], 1))];
      }
    }
    lane.erase(lane.find_last_not_of(' ') + 1);
    to_ += lane;
    to_ += '\n';
  }

  void logs() {
    heading("Logs");
    for (const LogSummary& log : summary_.logs) {
      line(log.enclosureSerial + ' ' + controllerText(log.controllerSerial, log.controllerSlot) +
               " log " + std::to_string(log.logInstance),
           2);
      const Sequence& sequence = log.sequence;
      line(counted(log.events, "event") + ", ids " + std::to_string(sequence.first()) + " to " +
               std::to_string(sequence.last()) + ", " + sequenceText(sequence),
           4);
      const std::size_t shown = std::min(sequence.gaps().size(), kMostGaps);
      for (std::size_t at = 0; at < shown; ++at) gap(sequence.gaps()[at]);
      more(sequence.gapCount() - shown, "gaps");
    }
    if (summary_.leftOut.logEvents != 0) {
      line("other logs: " + counted(summary_.leftOut.logEvents, "event"), 2);
    }
  }

  void gap(const SequenceGap& gap) {
    const std::uint32_t first = gap.after + 1;
    const std::uint32_t last = gap.before - 1;
    line((first == last ? "id " + std::to_string(first)
                        : "ids " + std::to_string(first) + " to " + std::to_string(last) + " (" +
                              std::to_string(gap.missing()) + ")") +
             " missing, " + timeText(gap.afterTimestamp, choosing_) + " to " +
             timeText(gap.beforeTimestamp, choosing_),
         6);
  }

  void sources() {
    constexpr std::size_t name = 24;
    constexpr std::size_t number = 10;
    constexpr std::array<std::string_view, 3> titles = {"    errors", "  warnings", "   inform."};
    to_ += '\n';
    left("Modules", name + 2);
    for (const std::string_view title : titles) to_ += title;
    to_ += "    events\n";
    for (const SourceSummary& source : summary_.sources) {
      to_ += "  ";
      left(source.name + " (" + std::to_string(source.code) + ')', name);
      for (const Severity severity : {error, warning, informational}) {
        right(source.events.of[severity], number);
      }
      right(source.events.total(), number);
      if (!source.hasDecoder()) to_ += "  no decoder";
      to_ += '\n';
      if (source.hasDecoder() && !source.undecodedCodes.empty()) {
        line("no decoder knows event code " + codesText(source.undecodedCodes), 4);
      }
    }
  }

  void kinds() {
    const auto once = std::find_if(summary_.kinds.begin(), summary_.kinds.end(),
                                   [](const KindSummary& kind) { return kind.events == 1; });
    const auto several = static_cast<std::size_t>(once - summary_.kinds.begin());
    if (several != 0) heading("Most frequent");
    const std::size_t shown = std::min(several, kMostKinds);
    for (std::size_t at = 0; at < shown; ++at) kind(summary_.kinds[at]);
    more(several - shown, "kinds");
    if (several != summary_.kinds.size()) heading("Seen once");
    const std::size_t seenOnce = std::min(summary_.kinds.size() - several, kMostSeenOnce);
    for (std::size_t at = several; at < several + seenOnce; ++at) kind(summary_.kinds[at]);
    more(summary_.kinds.size() - several - seenOnce, "kinds");
    if (summary_.leftOut.kindEvents != 0) {
      line("not told apart: " + counted(summary_.leftOut.kindEvents, "event"), 2);
    }
  }

  void kind(const KindSummary& kind) {
    constexpr std::size_t number = 8;
    if (kind.events > 1) right(kind.events, number);
    const std::size_t indent = kind.events > 1 ? 2 : 4;
    const std::size_t used = kind.events > 1 ? number + indent : indent;
    to_.fill(indent, ' ');
    to_ += fitted(kindText(kind.source, kind.eventId, kind.summary), kWidth - used);
    to_ += '\n';
    line(span(kind.time.first, kind.time.last), used + 2);
  }

  void lastErrors() {
    if (summary_.lastErrors.empty()) return;
    heading("Last errors");
    for (const ErrorSummary& error : summary_.lastErrors) {
      TextBuffer offset;
      offset += summary_.files.size() > 1 ? fileText(error.file) + ", offset " : "offset ";
      appendHex(offset, error.offset);
      line(kindText(error.source, error.eventId, error.summary), 2);
      line(timeText(error.timestamp, choosing_) + ", " +
               controllerText(error.controllerSerial, error.controllerSlot) + ", id " +
               std::to_string(error.sequenceId) + ", " + std::string(offset.view()),
           4);
    }
  }

  void damage() {
    heading("Damage and padding");
    std::size_t shown = 0;
    for (const FileSummary& file : summary_.files) {
      const log::Accounting& bytes = file.accounting;
      const bool sound = file.damage.empty() && bytes.paddingBytes == 0;
      if (sound || ++shown > kMostFiles) continue;
      line(fileText(file.name) + ": " + std::to_string(bytes.skippedBytes) + " bytes skipped, " +
               std::to_string(bytes.paddingBytes) + " padding",
           2);
      const std::size_t listed = std::min(file.damage.size(), kMostDamage);
      for (std::size_t at = 0; at < listed; ++at) {
        TextBuffer text;
        appendHex(text, file.damage[at].offset);
        text += ": ";
        text += describe(file.damage[at]);
        line(text.view(), 4);
      }
      more(file.damage.size() - listed + file.moreDamage, "places");
    }
    if (shown > kMostFiles) more(shown - kMostFiles, "files");
    if (shown == 0) line("none", 2);
  }

  TextBuffer& to_;
  const Summary& summary_;
  const ChoosingOptions& choosing_;
  std::array<std::uint64_t, 4> highest_{};
};

}  // namespace

void appendSummaryText(TextBuffer& to, const Summary& summary, const ChoosingOptions& choosing) {
  SummaryPage(to, summary, choosing).write();
}

}  // namespace mpuevent::tool
