// Time against size, 1 to 64 KiB, where a decoder that is not linear would show it: texts made of
// tags, trees, and the samples of each class with a long tail. bytes_per_second must not fall to a
// fraction as the size doubles and doubles again; it rises where the fixed cost is most of it.
#include <MPUEvent/Quarn_Event.h>
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "records/SampleRecords.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::samples::Module;
using mpuevent::samples::Sample;
using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;

/// Bytes, about as many as asked for.
using Make = std::function<std::string(std::size_t size)>;

Make repeated(std::string_view piece, std::string_view closing = "") {
  return [=](std::size_t size) {
    const std::size_t count = size / (piece.size() + closing.size());
    std::string text;
    for (std::size_t i = 0; i < count; ++i) text += piece;
    for (std::size_t i = 0; i < count; ++i) text += closing;
    return text;
  };
}

/// Tags of different names, all open at once.
std::string unlikeTags(std::size_t size) {
  std::string text;
  for (unsigned i = 0; text.size() < size; ++i) text += '<' + std::to_string(i) + '>';
  return text;
}

/// A tree of containers, each in the one before.
std::string deepTree(std::size_t size) {
  Payload nodes;
  for (std::size_t left = size / 8; left > 0; --left) {
    nodes.u32(2).u32(static_cast<std::uint32_t>(8 * (left - 1)));
  }
  return nodes.str();
}

std::string flatTree(std::size_t size) {
  Payload nodes;
  nodes.u32(2).u32(static_cast<std::uint32_t>(size));
  for (std::size_t i = 0; i < size / 10; ++i) nodes.u32(i % 2 == 0 ? 0 : 3).u32(2).text("x");
  return nodes.str();
}

std::string dumpTree(std::size_t size) {
  return Payload().u32(1).u32(static_cast<std::uint32_t>(size)).padTo(size).str();
}

void finish(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void makeSafe(benchmark::State& state, const Make& make) {
  const std::string text = make(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        Pegasus::Quarn_Event::makeSafeString(text.data(), static_cast<int>(text.size())));
  }
  finish(state, text.size());
}

/// All samples of the module in turn, with a tail of `make`; without a payload of their own if
/// `alone`.
void decode(benchmark::State& state, const Module& module, const Make& make, bool alone) {
  const std::string tail = make(static_cast<std::size_t>(state.range(0)));
  std::vector<std::string> records;
  for (const Sample& sample : module.samples()) {
    RecordBuilder builder = mpuevent::samples::record(module, sample);
    records.push_back(builder.payload((alone ? "" : sample.payload) + tail).str());
  }
  for (auto _ : state) {
    for (std::string& record : records) {
      const std::unique_ptr<Pegasus::Quarn_Event> event(
          module.construct(reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(record.data()),
                           static_cast<int>(record.size())));
      benchmark::DoNotOptimize(event.get());
    }
  }
  finish(state, records.size() * tail.size());
}

template <class Run>
void add(const std::string& name, Run run) {
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->RangeMultiplier(2)
      ->Range(1 << 10, 1 << 16)
      ->MinTime(0.02);
}

bool registerAll() {
  const std::vector<std::pair<std::string, Make>> texts = {
      {"nested", repeated("<a>", "</a>")},
      {"unclosed",        repeated("<a>")            },
      {"unlike",        unlikeTags  },
      {"unopened",        repeated("</a>")          },
      {"open_marks",        repeated("<")},
      {"elements",        repeated("<a>1=2</a>")            },
  };
  const std::vector<std::pair<std::string, Make>> trees = {
      {"deep", deepTree},
      {"flat", flatTree},
      {"dump", dumpTree}
  };
  const std::vector<std::pair<std::string, Make>> tails = {
      {"lines", repeated("Key=value\n")},
      {"tags",  repeated("<a>")        },
      {"ones",  repeated("\xFF")       }
  };
#ifndef __clang_analyzer__  // takes it for a leak that the library keeps what is registered
  for (const auto& [name, make] : texts) {
    add("makeSafeString/" + name,
        [make = make](benchmark::State& state) { makeSafe(state, make); });
  }
  for (const Module& module : mpuevent::samples::modules()) {
    const auto addDecoding = [&module](const std::string& name, const Make& make, bool alone) {
      add("decode/" + std::string(module.name) + '/' + name,
          [&module, make, alone](benchmark::State& state) { decode(state, module, make, alone); });
    };
    for (const auto& [name, make] : tails) addDecoding(name, make, false);
    if (module.name == "AWR8P") {
      for (const auto& [name, make] : trees) addDecoding(name, make, true);
    }
  }
#endif
  return true;
}

[[maybe_unused]] const bool registered = registerAll();

}  // namespace
