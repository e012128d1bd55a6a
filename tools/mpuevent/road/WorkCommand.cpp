#include "road/WorkCommand.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "Output.h"
#include "StopSignals.h"
#include "road/Worker.h"

namespace mpuevent::tool {

namespace {

constexpr char kWorkFooter[] =
    R"(Runs until SIGTERM or SIGINT, which let it finish what it has begun. A message
is acknowledged when its records are stored: any number of workers may run, on
any machines, and each may be killed at any time. What is no record, or cannot
be decoded, is stored as it is, with the reason.

Example:
  mpuevent work --from nats://n1:4222 --into postgresql://db/events --jobs 4)";

/// Workers on threads of their own. When one fails all come to their end.
class Crew {
 public:
  Crew(const WorkOptions& options, Road& road) : options_(options), road_(road) {}

  /// Throws what the first one threw that failed.
  void run() {
    std::vector<std::thread> threads;
    for (unsigned job = 0; job < options_.jobs; ++job) threads.emplace_back([this] { runOne(); });
    for (std::thread& thread : threads) thread.join();
    if (error_) std::rethrow_exception(error_);
  }

  const WorkDone& done() const { return done_; }

 private:
  void runOne() {
    try {
      const std::unique_ptr<Source> source = road_.openSource(options_.road.workers);
      Worker(*source, options_.store, done_, tell_, goOn_).run(options_.idle);
    } catch (...) {
      const std::lock_guard lock(mutex_);
      if (!error_) error_ = std::current_exception();
      failed_ = true;
    }
  }

  const WorkOptions& options_;
  Road& road_;
  WorkDone done_;
  std::mutex mutex_;
  std::exception_ptr error_;
  std::atomic<bool> failed_{false};
  const TellRoad tell_ = tellOfRoad;
  const std::function<bool()> goOn_ = [this] { return !StopSignals::came() && !failed_; };
};

void sumUp(TextBuffer& to, const WorkDone& done) {
  to += std::to_string(done.records) + " records in " + std::to_string(done.messages) +
        " messages, " + std::to_string(done.stored) + " new";
  if (done.broken != 0) to += ", " + std::to_string(done.broken) + " messages without records";
  to += '\n';
}

}  // namespace

void addWorkOptions(CLI::App& command, WorkOptions& options) {
  command.footer(kWorkFooter);
  addRoadOptions(command, "--from", options.road);
  addWorkersOption(command, options.road);
  command
      .add_option("--into", options.store,
                  "The store: a file (SQLite), or\npostgresql://USER@HOST/DATABASE")
      ->required()
      ->type_name("DB")
      ->group("Work");
  command.add_option("-j,--jobs", options.jobs, "Threads, each with a connection to the store")
      ->type_name("N")
      ->check(CLI::Range(1U, 256U).description(""))
      ->group("Work");
  command.add_option("--idle", options.idle, "End when no message came for so long")
      ->type_name("SECONDS")
      ->group("Work");
}

ExitCode work(const WorkOptions& options) {
  const StopSignals signals;
  const std::unique_ptr<Road> road =
      openRoad(addressOf(options.road), tellOfRoad, [] { return !StopSignals::came(); });
  if (road == nullptr) return decodedAll;
  // A store that can never be used is told at once.
  try {
    openStore(options.store, StoreAccess::write);
  } catch (const StoreError& error) {
    if (!error.isPassing()) throw;
  }
  Crew crew(options, *road);
  crew.run();
  Output output;
  sumUp(output.text(), crew.done());
  output.close();
  return decodedAll;
}

}  // namespace mpuevent::tool
