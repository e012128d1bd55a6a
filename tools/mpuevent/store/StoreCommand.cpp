#include "store/StoreCommand.h"

#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "LogRun.h"
#include "Output.h"
#include "forms/Numbers.h"
#include "store/Progress.h"
#include "store/Store.h"

namespace mpuevent::tool {

namespace {

// A transaction: large enough for its commit to cost little.
constexpr std::size_t kMostRows = 10000;
constexpr std::size_t kMostBytes = std::size_t{32} << 20;
// Of a log that comes slowly.
constexpr std::chrono::seconds kLongestWait{1};

/// Fills one batch while others are stored.
class Filling {
 public:
  explicit Filling(const std::string& target) : lines_(storesAtOnce(target)) {
    for (Line& line : lines_) line.store = openStore(target, StoreAccess::write);
  }
  Filling(const Filling&) = delete;
  Filling& operator=(const Filling&) = delete;

  void add(const log::LogUnit& unit, const RecordPlace& place) {
    if (filled_->empty()) begin_ = Clock::now();
    filled_->add(unit.record, place);
    if (filled_->rows() == kMostRows || filled_->bytes() >= kMostBytes ||
        Clock::now() - begin_ > kLongestWait) {
      storeFilled();
    }
  }
  /// Stores what is left; returns how many events were new.
  std::uint64_t finish() {
    storeFilled();
    for (Line& line : lines_) awaitStored(line);
    return added_;
  }

 private:
  using Clock = std::chrono::steady_clock;

  struct Line {
    std::unique_ptr<Store> store;
    std::unique_ptr<Batch> batch = std::make_unique<Batch>();
    std::future<std::size_t> put;  // waits for its thread when it goes
  };

  void storeFilled() {
    Line& line = lines_[next_];
    next_ = (next_ + 1) % lines_.size();
    awaitStored(line);
    std::swap(filled_, line.batch);
    try {
      line.store->takeTurn();
    } catch (const StoreError& error) {
      fail(error);
    }
    line.put = std::async(std::launch::async, [&line] { return line.store->put(*line.batch); });
  }
  void awaitStored(Line& line) {
    if (!line.put.valid()) return;
    try {
      added_ += line.put.get();
    } catch (const StoreError& error) {
      fail(error);
    }
    line.batch->clear();
  }
  // One that it reads from may fail, and others be read; where all is to go may not.
  [[noreturn]] static void fail(const StoreError& error) { throw std::runtime_error(error.what()); }

  std::unique_ptr<Batch> filled_ = std::make_unique<Batch>();
  std::vector<Line> lines_;
  std::size_t next_ = 0;  // of them
  Clock::time_point begin_;
  std::uint64_t added_ = 0;
};

void appendEvents(TextBuffer& to, std::uint64_t count) {
  appendDecimal(to, count);
  to += count == 1 ? " event" : " events";
}

ExitCode decodeAgain(const StoreOptions& options) {
  if (!options.input.selection.names.empty() || !options.input.selection.namesFile.empty()) {
    throw std::invalid_argument("--again decodes what is in the store; it takes no files");
  }
  Output output;
  std::uint64_t decoded = 0;
  {
    Progress progress;
    decoded = openStore(options.target, StoreAccess::write)
                  ->decodeAgain(options.choosing.choice,
                                [&](std::uint64_t events) { progress.tell(events, 0); });
  }
  appendEvents(output.text(), decoded);
  output.text() += " decoded again\n";
  output.close();
  return decoded != 0 ? decodedAll : nothingDecoded;
}

}  // namespace

ExitCode store(const StoreOptions& options) {
  if (options.again) return decodeAgain(options);
  Filling filling(options.target);
  Output output;
  LogRun run(options.input, options.choosing, output);
  std::uint64_t events = 0;
  std::uint64_t added = 0;
  {
    Progress progress;
    std::uint64_t files = 0;
    run.forEachUnit(
        [&](const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
          filling.add(unit, {file.name, index, unit.offset});
          progress.tell(++events, files);
        },
        [&](const LogFile&) { ++files; });
    added = filling.finish();
  }
  appendEvents(output.text(), events);
  output.text() += " read, ";
  appendDecimal(output.text(), added);
  output.text() += " new\n";
  output.close();
  return run.exitCode();
}

}  // namespace mpuevent::tool
