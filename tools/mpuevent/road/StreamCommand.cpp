#include "road/StreamCommand.h"

#include <CLI/CLI.hpp>
#include <string>

#include "Output.h"
#include "StopSignals.h"

namespace mpuevent::tool {

namespace {

constexpr char kStreamFooter[] =
    R"(Without --create, how the streams are: who leads, which servers lag behind, how
many messages lie there and since when, how many wait for workers. Exit code 1
if there are none, or one that no server leads.

Examples:
  mpuevent stream --create --to nats://n1:4222 --streams 4
  mpuevent stream --to nats://n1:4222)";

void appendState(TextBuffer& to, const StreamState& state) {
  to += state.name + ": " + state.subjects + "\n  replicas " + std::to_string(state.replicas) +
        ", leader " + (state.leader.empty() ? "none" : state.leader);
  for (const std::string& server : state.behind) to += ", " + server + " lags behind";
  to += "\n  messages " + std::to_string(state.messages) + ", bytes " +
        std::to_string(state.bytes) + ", oldest " + std::to_string(state.oldest.count()) + " s\n";
  if (state.hasWorkers) {
    to += "  waiting for workers " + std::to_string(state.waiting) + ", not acknowledged " +
          std::to_string(state.unconfirmed) + ", given again " + std::to_string(state.redelivered) +
          '\n';
  } else {
    to += "  no workers so far\n";
  }
}

StreamSettings settingsOf(const StreamOptions& options) {
  StreamSettings settings;
  settings.streams = options.streams;
  settings.replicas = options.replicas;
  settings.keep = std::chrono::hours(options.keepHours);
  settings.duplicates = std::chrono::seconds(options.duplicatesSeconds);
  if (options.mostMegabytes > 0) settings.mostBytes = options.mostMegabytes * 1'000'000;
  return settings;
}

void addCreationOptions(CLI::App& command, StreamOptions& options) {
  CLI::Option* const create =
      command.add_flag("--create", options.create, "Make the streams, or change how they keep")
          ->group("Streams");
  const auto add = [&](const std::string& name, auto& value, const std::string& type,
                       const std::string& description) {
    return command.add_option(name, value, description)
        ->type_name(type)
        ->needs(create)
        ->group("Streams");
  };
  add("--streams", options.streams, "N",
      "How many share the 16 subjects mpu.raw.SHARD:\n1 (default), 2, 4, 8 or 16, once and for all")
      ->check(CLI::IsMember({1U, 2U, 4U, 8U, 16U}).description(""));
  add("--replicas", options.replicas, "N", "Servers that have each message (default 3)")
      ->check(CLI::Range(1U, 5U).description(""));
  add("--keep", options.keepHours, "HOURS", "How long messages are kept (default 168)")
      ->check(CLI::Range(1U, 87600U).description(""));
  add("--duplicates", options.duplicatesSeconds, "SECONDS",
      "How long a message that comes again is known\n(default 120)")
      ->check(CLI::Range(1U, 86400U).description(""));
  add("--max-size", options.mostMegabytes, "MB",
      "Of a stream; the oldest messages make room\n(default: as much as the servers have)")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000'000}).description(""));
}

}  // namespace

void addStreamOptions(CLI::App& command, StreamOptions& options) {
  command.footer(kStreamFooter);
  addRoadOptions(command, "--to", options.road);
  addWorkersOption(command, options.road);
  addCreationOptions(command, options);
}

ExitCode stream(const StreamOptions& options) {
  const StopSignals signals;
  const std::unique_ptr<Road> road =
      openRoad(addressOf(options.road), tellOfRoad, [] { return !StopSignals::came(); });
  if (road == nullptr) return ExitCode::failed;
  if (options.create) road->makeStreams(settingsOf(options));
  const std::vector<StreamState> states = road->streams(options.road.workers);
  Output output;
  bool led = !states.empty();
  for (const StreamState& state : states) {
    appendState(output.text(), state);
    led = led && !state.leader.empty();
  }
  if (states.empty()) complain("there are no streams; 'mpuevent stream --create' makes them");
  output.close();
  return led ? decodedAll : nothingDecoded;
}

}  // namespace mpuevent::tool
