#include "road/SendCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "LogRun.h"
#include "Output.h"
#include "StopSignals.h"
#include "road/Packer.h"
#include "road/Sender.h"

namespace mpuevent::tool {

namespace {

constexpr char kSendFooter[] =
    R"(Ends when the servers have acknowledged all records. What they don't take is
sent again after a pause, what is sent twice is stored once.

Examples:
  mpuevent send --to nats://n1:4222 --follow --cursor-file place array.cmap
  mpuevent send --to nats://n1:4222,nats://n2:4222,nats://n3:4222 array.cmap
  mpuevent audit DB a.cmap -o raw | mpuevent send --to nats://n1:4222 --again)";

/// Sending was interrupted.
struct Stopped {};

class Shipment {
 public:
  Shipment(const SendOptions& options, Road& road)
      : again_(options.again),
        giveUp_(options.giveUp),
        sink_(road.openSink()),
        sender_(*sink_, tellOfRoad, [this] { return goesOn(); }),
        packer_([this](Parcel parcel, std::uint64_t place) {
          if (again_) parcel.id.clear();
          sender_.send(std::move(parcel), place);
        }) {}

  /// Throws Stopped.
  void add(const log::LogUnit& unit) {
    if (!goesOn()) throw Stopped();
    packer_.add(unit.record, places_++);
  }

  /// Waits for what is under way; whether all of it is acknowledged.
  bool settle() {
    packer_.flush();
    return sender_.finish();
  }

  void sumUp(TextBuffer& to) const {
    to += std::to_string(sender_.records()) + " records sent in " +
          std::to_string(sender_.messages()) + " messages, of which the servers had " +
          std::to_string(sender_.known()) + '\n';
  }
  std::size_t underWay() const { return sender_.underWay(); }

 private:
  bool goesOn() const {
    return !StopSignals::came() &&
           (!giveUp_ || sender_.stuckFor() < std::chrono::seconds(*giveUp_));
  }

  const bool again_;
  const std::optional<std::uint32_t> giveUp_;
  std::unique_ptr<Sink> sink_;
  Sender sender_;
  Packer packer_;
  std::uint64_t places_ = 0;
};

}  // namespace

void addSendOptions(CLI::App& command, SendOptions& options) {
  command.footer(kSendFooter);
  addInputOptions(command, options.input);
  addFollowOptions(command, options.following);
  addRoadOptions(command, "--to", options.road);
  command
      .add_flag("--again", options.again,
                "Also what the servers have: for what got lost\nbehind them")
      ->group("Sending");
  command
      .add_option("--give-up", options.giveUp,
                  "End when nothing was acknowledged for so long;\nelse it goes on trying")
      ->type_name("SECONDS")
      ->group("Sending");
}

ExitCode send(const SendOptions& options) {
  const StopSignals signals;
  const std::unique_ptr<Road> road =
      openRoad(addressOf(options.road), tellOfRoad, [] { return !StopSignals::came(); });
  if (road == nullptr) return ExitCode::failed;
  const ChoosingOptions all;
  Output output;
  LogRun run(options.input, all, output);
  run.follow(options.following);
  run.acceptLongRecords();
  Shipment shipment(options, *road);
  LogRun::Watch watch;
  watch.settle = [&] { return shipment.settle(); };
  run.watch(std::move(watch));
  bool stopped = false;
  try {
    run.forEachUnit(
        [&](const LogFile&, const log::LogUnit& unit, std::uint64_t) { shipment.add(unit); });
  } catch (const Stopped&) {
    stopped = true;
  }
  const bool done = shipment.settle() && (!stopped || options.following.follow);
  shipment.sumUp(output.text());
  run.finish();
  if (!done) {
    complain("not everything was sent; " + std::to_string(shipment.underWay()) +
             " messages are not acknowledged");
    return ExitCode::failed;
  }
  // To one who left off at the end, or looks for more, nothing new is no failure.
  const bool goesOn = options.following.follow || !options.following.cursorFile.empty();
  return goesOn && run.exitCode() == nothingDecoded ? decodedAll : run.exitCode();
}

}  // namespace mpuevent::tool
