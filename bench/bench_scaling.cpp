// Time against size, 1 KiB to the longest payload, where work that is not linear would show it:
// texts made of tags, and of each class the events whose texts, lists and trees grow with the size.
// bytes_per_second must not fall to a fraction as the size doubles and doubles again; it rises
// where the fixed cost is most of it. A row that shows no more of a longer payload is an error, and
// so is a class without a row.
#include <MPUEvent/Quarn_Event.h>
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::samples::Module;
using mpuevent::samples::Sample;
using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;

constexpr std::size_t smallest = 1 << 10;
constexpr std::size_t longestPayload = 65383;  // of a record in a message

/// Bytes, as many as asked for or a few less.
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

/// The same, and what would close them from the last to the first.
std::string unlikeNested(std::size_t size) {
  std::string text;
  std::string closing;
  for (unsigned i = 0; text.size() + closing.size() < size; ++i) {
    text += '<' + std::to_string(i) + '>';
    closing.insert(0, "</" + std::to_string(i) + '>');
  }
  return text + closing;
}

/// Tags of different lengths, then closing tags that begin like those of all and end like none.
std::string nearMisses(std::size_t size) {
  std::string text;
  for (unsigned length = 1; text.size() < size / 2; ++length) {
    text += '<' + std::string(length, 'a') + "b>";
  }
  while (text.size() + 4 <= size) text += "</aa";
  return text;
}

/// Tags of two letters, most of them different, then closing tags of one.
std::string twoLetters(std::size_t size) {
  constexpr unsigned letters = 26;
  const auto letter = [](unsigned number) { return static_cast<char>('a' + number % letters); };
  std::string text;
  for (unsigned i = 0; text.size() < size / 2; ++i) {
    text += {'<', letter(i), letter(i / letters), '>'};
  }
  for (unsigned i = 0; text.size() < size; ++i) text += {'<', '/', letter(i)};
  return text;
}

/// Near misses, then tags that are all different.
std::string unlikeBehindMisses(std::size_t size) {
  return nearMisses(size / 2) + unlikeTags(size / 2);
}

/// A name that holds a closing tag again and again, and what nearly is that name.
std::string knots(std::size_t size) {
  std::string text = "<a";
  while (text.size() < size / 2) text += "</a";
  text += "!>";
  while (text.size() < size) text += "</a";
  return text;
}

/// Tags of different lengths, all open at once, then closing tags that belong to none of them.
std::string unlikeLengths(std::size_t size) {
  std::string text;
  for (std::size_t length = 1; text.size() < size / 2; ++length) {
    text += '<' + std::string(length, 'x') + '>';
  }
  while (text.size() < size) text += "</";
  return text;
}

Payload node(std::uint32_t type, const std::string& data) {
  return Payload().u32(type).u32(static_cast<std::uint32_t>(data.size())).bytes(data);
}

/// A tree of containers, each in the one before and beside a text.
std::string deepTree(std::size_t size) {
  constexpr std::size_t level = 8 + 8 + 2;
  Payload nodes;
  for (std::size_t left = (size - 8) / level; left > 0; --left) {
    nodes.u32(0).u32(2).text("x").u32(2).u32(static_cast<std::uint32_t>(level * (left - 1)));
  }
  return node(2, nodes.str()).str();
}

std::string flatTree(std::size_t size) {
  Payload nodes;
  for (std::size_t i = 0; i < (size - 8) / 10; ++i) nodes.u32(i % 2 == 0 ? 0 : 3).u32(2).text("x");
  return node(2, nodes.str()).str();
}

std::string dumpTree(std::size_t size) { return node(1, std::string(size - 8, 'x')).str(); }

/// Dumps that claim the rest of the payload, each in a container that ends behind its head: shown
/// are as many as the decoder shows at all, some forty characters for each byte.
std::string dumpsInOneAnother(std::size_t size) {
  constexpr std::size_t head = 8;
  Payload nodes;
  for (std::size_t left = (size - head) / (2 * head); left > 0; --left) {
    nodes.u32(2).u32(head).u32(1).u32(longestPayload);
  }
  return node(2, nodes.str()).str();
}

/// The same beside a text that is not ASCII.
std::string dumpsBesideText(std::size_t size) {
  const std::string text = node(0, {'\xD1', '\0'}).str();
  return dumpsInOneAnother(size - text.size()).insert(8, text);
}

/// A volume and its extents.
std::string volumeExtents(std::size_t size) {
  return Payload()
      .u32(6)
      .u32(510)
      .u64(0)
      .u32(static_cast<std::uint32_t>(size - 20))
      .padTo(size)
      .str();
}

/// A login parameter between two long names.
std::string longNames(std::size_t size) {
  const std::string name(size / 2 - 40, 'n');
  const auto length = static_cast<std::uint16_t>(name.size() + 1);
  Payload payload;
  payload.u16(3).u16(9).u32(5).zeros(48).u16(length).u16(length).u16(2).u16(2).u16(0);
  return payload.text(name).text(name).text("k").text("v").str();
}

/// Payloads that carry lengths of their own, which a longer sample cannot show.
struct Growing {
  std::string_view module;
  std::uint16_t id;
  const char* name;
  Make make;
};

const Growing growing[] = {
    {"AWR8P",   1, "deep",                 deepTree         },
    {"AWR8P",   1, "flat",                 flatTree         },
    {"AWR8P",   1, "dump",                 dumpTree         },
    {"AWR8P",   1, "dumps_in_one_another", dumpsInOneAnother},
    {"AWR8P",   1, "dumps_beside_text",    dumpsBesideText  },
    {"IOMGR8P", 1, "extents",              volumeExtents    },
    {"ISCSIMP", 4, "names",                longNames        },
};

/// Closing tags without an end, but for the last.
std::string closingMarks(std::size_t size) { return repeated("</")(size) + '>'; }

const std::pair<const char*, Make> tails[] = {
    {"lines",         repeated("Key=value\n")},
    {"tags",          repeated("<a>")        },
    {"closing_marks", closingMarks           },
    {"ones",          repeated("\xFF")       },
};

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
  const Pegasus::String safe =
      Pegasus::Quarn_Event::makeSafeString(text.data(), static_cast<int>(text.size()));
  state.counters["output"] = safe.size();
}

using Event = std::unique_ptr<Pegasus::Quarn_Event>;

Event construct(const Module& module, std::string& record) {
  return Event(module.construct(reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(record.data()),
                                static_cast<int>(record.size())));
}

/// Records of one event of a module, with a payload of about the size.
using MakeRecord = std::function<std::string(std::size_t size)>;

std::size_t textSize(const Module& module, const MakeRecord& make, std::size_t size) {
  std::string record = make(size);
  return mpuevent::support::fieldsOf(*construct(module, record)).textSize();
}

bool grows(const Module& module, const MakeRecord& make) {
  return textSize(module, make, longestPayload) > 16 * textSize(module, make, smallest);
}

void decode(benchmark::State& state, const Module& module, const MakeRecord& make) {
  std::string record = make(static_cast<std::size_t>(state.range(0)));
  if (!grows(module, make)) state.SkipWithError("a longer payload shows no more");
  for (auto _ : state) benchmark::DoNotOptimize(construct(module, record).get());
  finish(state, record.size());
  state.counters["output"] =
      static_cast<double>(textSize(module, make, static_cast<std::size_t>(state.range(0))));
}

/// The sample with a tail in place of the NULs at its end, so that its last text grows.
MakeRecord longer(const Module& module, const Sample& sample, const Make& tail) {
  return [&module, sample, tail](std::size_t size) {
    std::string payload = sample.payload;
    payload.erase(payload.find_last_not_of('\0') + 1);
    payload += tail(size > payload.size() ? size - payload.size() : 0);
    return mpuevent::samples::record(module, sample).payload(payload).str();
  };
}

template <class Run>
void add(const std::string& name, Run run) {
  benchmark::RegisterBenchmark(name.c_str(), run)
      ->RangeMultiplier(4)
      ->Range(smallest, longestPayload)
      ->MinTime(0.02);
}

/// The rows of a module: its own growing payloads, and of each tail the sample that shows most.
std::size_t addRows(const Module& module) {
  std::size_t rows = 0;
  const auto addRow = [&](const std::string& name, const MakeRecord& make) {
    add("decode/" + std::string(module.name) + '/' + name,
        [&module, make](benchmark::State& state) { decode(state, module, make); });
    ++rows;
  };
  for (const Growing& row : growing) {
    if (row.module != module.name) continue;
    addRow(row.name, [&module, &row](std::size_t size) {
      return RecordBuilder().source(module.source).id(row.id).payload(row.make(size)).str();
    });
  }
  for (const auto& [name, tail] : tails) {
    MakeRecord most;
    std::size_t shown = 0;
    for (const Sample& sample : module.samples()) {
      const MakeRecord make = longer(module, sample, tail);
      const std::size_t size = textSize(module, make, longestPayload);
      if (size <= shown || !grows(module, make)) continue;
      shown = size;
      most = make;
    }
    if (most) addRow(name, most);
  }
  return rows;
}

bool registerAll() {
  const std::vector<std::pair<std::string, Make>> texts = {
      {"nested", repeated("<a>", "</a>")},
      {"unclosed",        repeated("<a>")            },
      {"unlike",        unlikeTags  },
      {"unlike_nested",        unlikeNested     },
      {"unlike_lengths",        unlikeLengths },
      {"near_misses",        nearMisses        },
      {"two_letters",        twoLetters },
      {"unlike_behind_misses",        unlikeBehindMisses},
      {"knots",        knots                },
      {"unopened",        repeated("</a>")},
      {"open_marks",        repeated("<")              },
      {"elements",        repeated("<a>1=2</a>")},
  };
#ifndef __clang_analyzer__  // takes it for a leak that the library keeps what is registered
  for (const auto& [name, make] : texts) {
    add("makeSafeString/" + name,
        [make = make](benchmark::State& state) { makeSafe(state, make); });
  }
  for (const Module& module : mpuevent::samples::modules()) {
    if (module.plain || addRows(module) > 0) continue;
    add("decode/" + std::string(module.name), [](benchmark::State& state) {
      state.SkipWithError("no sample shows more of a longer payload: give it a row in `growing`");
    });
  }
#endif
  return true;
}

[[maybe_unused]] const bool registered = registerAll();

}  // namespace
