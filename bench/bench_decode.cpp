// Decoding, class by class and all samples in turn, and beside each the floor: the work that is
// left when every output text is known beforehand. decode/NAME over floor/NAME is the price of
// decoding. Shown are the time and the allocations of one event, and how fast its texts come.
#include <MPUEvent/MPUEvent.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "Allocations.h"
#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::support::EventFields;
using Pegasus::MPUEvent;
using Pegasus::String;

/// The records of one class, or of all: as loaded envelopes, and as what comes out of them.
struct Load {
  std::vector<MPUEvent> envelopes;
  std::vector<EventFields> outputs;
  double textSize = 0;

  void add(std::string_view record) {
    const std::string message = mpuevent::support::message(record);
    const Pegasus::CMAPMessageHeader header(reinterpret_cast<const unsigned char*>(message.data()));
    Pegasus::Quarn_imemstream body(record.data(), static_cast<int>(record.size()));
    envelopes.emplace_back(header, body);
    const std::unique_ptr<Pegasus::Quarn_Event> event(envelopes.back().create_Quarn_Event());
    outputs.push_back(mpuevent::support::fieldsOf(*event));
    textSize += static_cast<double>(outputs.back().textSize());
  }
};

/// An object like an event, of which nothing but the texts costs anything.
struct FloorEvent {
  explicit FloorEvent(const EventFields& fields)
      : enclosureSerial(stringOf(fields.texts[0])),
        controllerSerial(stringOf(fields.texts[1])),
        numbers(fields.numbers),
        source(stringOf(fields.texts[2])),
        category(stringOf(fields.texts[3])),
        eventId(stringOf(fields.texts[4])),
        summary(stringOf(fields.texts[5])),
        body(stringOf(fields.texts[6])) {}
  virtual ~FloorEvent() = default;
  FloorEvent(const FloorEvent&) = delete;
  FloorEvent& operator=(const FloorEvent&) = delete;

  static String stringOf(const std::string& text) {
    return {text.data(), static_cast<Pegasus::Uint32>(text.size())};
  }

  String enclosureSerial;
  String controllerSerial;
  std::array<unsigned int, 5> numbers;
  String source;
  String category;
  String eventId;
  String summary;
  String body;
};

/// An iteration makes the event of the next item, so that the time shown is that of one event.
/// `make` returns an owning pointer.
template <class Item, class Make>
void run(benchmark::State& state, const Load& load, const std::vector<Item>& items, Make make) {
  const std::uint64_t allocationsBefore = mpuevent::bench::allocations();
  std::size_t next = 0;
  for (auto _ : state) {
    const auto event = make(items[next]);
    benchmark::DoNotOptimize(event.get());
    next = next + 1 == items.size() ? 0 : next + 1;
  }
  using benchmark::Counter;
  const auto events = static_cast<double>(state.iterations());
  const double megabytes = load.textSize / static_cast<double>(items.size()) * 1e-6;
  state.counters["allocations"] =
      static_cast<double>(mpuevent::bench::allocations() - allocationsBefore) / events;
  state.counters["outputMB"] = Counter(events * megabytes, Counter::kIsRate);
}

void decode(benchmark::State& state, const Load& load) {
  run(state, load, load.envelopes, [](const MPUEvent& envelope) {
    return std::unique_ptr<Pegasus::Quarn_Event>(envelope.create_Quarn_Event());
  });
}

void makeFloor(benchmark::State& state, const Load& load) {
  run(state, load, load.outputs,
      [](const EventFields& fields) { return std::make_unique<FloorEvent>(fields); });
}

/// The sample with other characters in the middle of its longest text.
std::string withCharacters(const mpuevent::samples::Module& module,
                           const mpuevent::samples::Sample& sample, std::string_view characters) {
  const auto isText = [](char byte) { return byte >= ' ' && byte <= '~'; };
  std::string payload = sample.payload;
  auto longest = payload.begin();
  auto longestEnd = longest;
  for (auto begin = payload.begin(); begin != payload.end();) {
    begin = std::find_if(begin, payload.end(), isText);
    const auto end = std::find_if_not(begin, payload.end(), isText);
    if (end - begin > longestEnd - longest) std::tie(longest, longestEnd) = std::pair{begin, end};
    begin = end;
  }
  std::replace_if(
      longest, longestEnd, [](char byte) { return byte == '<' || byte == '>'; }, '.');
  std::copy(characters.begin(), characters.end(), longest + (longestEnd - longest) / 2);
  return mpuevent::samples::record(module, sample).payload(payload).str();
}

/// What a "<" costs where texts of the record are made safe, and what a closing tag does: the same
/// event with neither, one and the other.
void registerMarks(const mpuevent::samples::Module& module) {
  const mpuevent::samples::Sample sample = module.samples().front();
  const std::pair<const char*, const char*> rows[] = {
      {"none",    "(ab)"},
      {"open",    "<ab>"},
      {"closing", "</a>"}
  };
  for (const auto& [name, characters] : rows) {
    const auto load = std::make_shared<Load>();
    load->add(withCharacters(module, sample, characters));
    benchmark::RegisterBenchmark(("marks/" + std::string(module.name) + '/' + name).c_str(),
                                 [load](benchmark::State& state) { decode(state, *load); });
  }
}

bool registerAll() {
  std::map<std::string, std::shared_ptr<Load>> loads;
  const auto loadOf = [&loads](std::string_view name) -> Load& {
    std::shared_ptr<Load>& load = loads[std::string(name)];
    if (!load) load = std::make_shared<Load>();
    return *load;
  };
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    for (const mpuevent::samples::Sample& sample : module.samples()) {
      const std::string record = mpuevent::samples::record(module, sample).str();
      loadOf(module.name).add(record);
      loadOf("mix").add(record);
    }
  }
#ifndef __clang_analyzer__  // takes it for a leak that the library keeps what is registered
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    if (module.name == "ISNSC" || module.name == "AIMMP") registerMarks(module);
  }
  for (const auto& [name, load] : loads) {
    benchmark::RegisterBenchmark(("decode/" + name).c_str(),
                                 [load = load](benchmark::State& state) { decode(state, *load); });
    benchmark::RegisterBenchmark(("floor/" + name).c_str(), [load = load](benchmark::State& state) {
      makeFloor(state, *load);
    });
  }
#endif
  return true;
}

[[maybe_unused]] const bool registered = registerAll();

}  // namespace
