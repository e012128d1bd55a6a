#include "road/AuditCommand.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "LogRun.h"
#include "Output.h"
#include "WordOption.h"
#include "forms/Numbers.h"
#include "forms/Utf8.h"
#include "log/choosing/KeptUnit.h"
#include "store/Store.h"

namespace mpuevent::tool {

namespace {

constexpr char kAuditFooter[] =
    R"(Exit code 1: the store lacks something; 0: it lacks nothing, and what all of
FILE holds may be deleted.

Examples:
  mpuevent audit events.db
  mpuevent audit postgresql://db/events spool.cmap --no-gaps && rm spool.cmap
  mpuevent audit DB a.cmap -o raw | mpuevent send --to nats://n1:4222 --again)";

void appendLog(TextBuffer& to, std::string_view enclosure, std::string_view controller,
               std::uint32_t instance) {
  to += "enclosure ";
  appendVisible(to, enclosure);
  to += ", controller ";
  appendVisible(to, controller);
  to += ", log ";
  appendDecimal(to, instance);
}

/// Records of a log in a file, one after another by their ids, that the store lacks.
struct Lack {
  std::size_t file;
  std::string name;
  std::uint64_t offset;
  RecordKey first;
  std::uint32_t lastId;
  std::uint64_t records;

  bool isOf(std::size_t inFile, const RecordKey& key) const {
    return inFile == file && key.logInstance == first.logInstance &&
           key.controllerSerial == first.controllerSerial &&
           key.enclosureSerial == first.enclosureSerial;
  }
};

class Auditor {
 public:
  Auditor(const AuditOptions& options, Store& store, Output& output)
      : options_(options), store_(store), output_(output) {}

  void findGaps() {
    store_.forEachGap([this](const StoredGap& gap) {
      TextBuffer& text = output_.text();
      ++gaps_;
      missing_ += gap.before - gap.after - 1;
      if (options_.output == AuditOutput::raw) return;
      appendLog(text, gap.enclosureSerial, gap.controllerSerial, gap.logInstance);
      text += ": gap, " + std::to_string(gap.before - gap.after - 1) + " ids missing between ";
      appendDecimal(text, gap.after);
      text += " and ";
      appendDecimal(text, gap.before);
      text += '\n';
      output_.flushIfLarge();
    });
  }

  void look(const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
    if (names_.size() <= file.number) names_.resize(file.number + 1);
    if (names_[file.number].empty()) names_[file.number] = file.shownName;
    kept_.emplace_back(unit, file.number, index);
    keys_.push_back(keyOf(unit.record));
    if (keys_.size() == most) ask();
  }

  void finish() {
    ask();
    for (const Lack& lack : lacks_) tell(lack);
    lacks_.clear();
  }

  bool lacksAny() const { return gaps_ != 0 || lacking_ != 0; }

  void sumUp(TextBuffer& to) const {
    if (!options_.noGaps) {
      to += std::to_string(gaps_) + " gaps, " + std::to_string(missing_) + " ids missing\n";
    }
    if (hasFiles()) {
      to += std::to_string(read_) + " records in the files, " + std::to_string(lacking_) +
            " not in the store\n";
    }
  }

  bool hasFiles() const {
    return !options_.input.selection.names.empty() || !options_.input.selection.namesFile.empty();
  }

 private:
  static constexpr std::size_t most = 4096;
  static constexpr std::size_t mostLogs = 64;

  void ask() {
    if (keys_.empty()) return;
    const std::vector<bool> has = store_.has(keys_);
    for (std::size_t at = 0; at < keys_.size(); ++at) {
      ++read_;
      if (!has[at]) lack(kept_[at], keys_[at]);
    }
    kept_.clear();
    keys_.clear();
    output_.flushIfLarge();
  }

  void lack(const log::KeptUnit& unit, const RecordKey& key) {
    ++lacking_;
    if (options_.output == AuditOutput::raw) {
      const auto record = unit.record();
      output_.text() += {reinterpret_cast<const char*>(record.data()), record.size()};
      output_.flushIfLarge();
      return;
    }
    // The logs of a file may take turns.
    const auto open = std::find_if(lacks_.begin(), lacks_.end(),
                                   [&](const Lack& lack) { return lack.isOf(unit.file(), key); });
    if (open != lacks_.end() && key.sequenceId == open->lastId + 1) {
      ++open->records;
      open->lastId = key.sequenceId;
      return;
    }
    const auto ended = open != lacks_.end() || lacks_.size() < mostLogs ? open : lacks_.begin();
    if (ended != lacks_.end()) {
      tell(*ended);
      lacks_.erase(ended);
    }
    lacks_.push_back(
        {unit.file(), names_[unit.file()], unit.unit().offset, key, key.sequenceId, 1});
  }

  void tell(const Lack& lack) {
    TextBuffer& text = output_.text();
    appendVisible(text, lack.name);
    text += ": offset ";
    appendHex(text, lack.offset);
    text += ": ";
    appendLog(text, lack.first.enclosureSerial, lack.first.controllerSerial,
              lack.first.logInstance);
    text += ": " + std::to_string(lack.records) + (lack.records == 1 ? " record" : " records") +
            " not in the store, sequence id ";
    appendDecimal(text, lack.first.sequenceId);
    if (lack.records > 1) text += " to " + std::to_string(lack.lastId);
    text += '\n';
    output_.flushIfLarge();
  }

  const AuditOptions& options_;
  Store& store_;
  Output& output_;
  std::vector<log::KeptUnit> kept_;
  std::vector<RecordKey> keys_;
  std::vector<std::string> names_;
  std::vector<Lack> lacks_;
  std::uint64_t gaps_ = 0;
  std::uint64_t missing_ = 0;
  std::uint64_t read_ = 0;
  std::uint64_t lacking_ = 0;
};

ExitCode look(const AuditOptions& options, Auditor& auditor, Output& output) {
  if (!auditor.hasFiles()) return decodedAll;
  LogRun run(options.input, options.choosing, output);
  run.acceptLongRecords();
  run.forEachUnit([&](const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
    auditor.look(file, unit, index);
  });
  auditor.finish();
  return run.exitCode();
}

}  // namespace

void addAuditOptions(CLI::App& command, AuditOptions& options) {
  command.footer(kAuditFooter);
  command
      .add_option("DB", options.store,
                  "The store: a file (SQLite), or\npostgresql://USER@HOST/DATABASE")
      ->type_name("")
      ->required();
  addInputOptions(command, options.input);
  addChoosingOptions(command, options.choosing);
  command.add_flag("--no-gaps", options.noGaps, "Only what of FILE is not in the store")
      ->group("Audit");
  addWordOption<AuditOutput>(command, "-o,--output", options.output,
                             {
                                 {"text", AuditOutput::text},
                                 {"raw",  AuditOutput::raw }
  },
                             "text (default), or raw: the records of FILE that\nthe store lacks")
      ->type_name("FORM")
      ->group("Output");
}

ExitCode audit(const AuditOptions& options) {
  const bool raw = options.output == AuditOutput::raw;
  if (raw && ::isatty(STDOUT_FILENO) != 0) {
    complain("-o raw is not for terminals; send it to a file or another program");
    return failed;
  }
  const std::unique_ptr<Store> store = openStore(options.store, StoreAccess::read);
  Output output;
  Auditor auditor(options, *store, output);
  if (!options.noGaps) auditor.findGaps();
  const ExitCode reading = look(options, auditor, output);
  if (!raw) auditor.sumUp(output.text());
  output.close();
  if (reading == failed || auditor.lacksAny()) return reading == failed ? failed : nothingDecoded;
  return reading == nothingDecoded ? decodedAll : reading;
}

}  // namespace mpuevent::tool
