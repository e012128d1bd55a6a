#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "DamagedLog.h"
#include "log/framing/LogReader.h"

namespace mpuevent::log {
namespace {

using support::DamagedLog;

struct Outcome {
  std::size_t untouched = 0;
  std::size_t found = 0;
  std::size_t falseEvents = 0;
};

struct Read {
  struct Unit {
    std::size_t size;
    std::uint32_t sequenceId;
  };
  std::map<std::uint64_t, Unit> units;  // by their offsets
  std::vector<Finding> findings;
};

Read readAll(const std::string& bytes, LogForm form) {
  Read read;
  LogReader reader(
      [&bytes, at = std::size_t{0}](unsigned char* to, std::size_t room) mutable {
        const std::size_t count = std::min(room, bytes.size() - at);
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), count, to);
        at += count;
        return static_cast<long>(count);
      },
      form, [&read](const Finding& finding) { read.findings.push_back(finding); });
  for (LogUnit unit; reader.next(unit);) {
    const RecordView record(unit.record.data(), unit.record.size());
    const std::size_t header = unit.header == nullptr ? 0 : 64;
    read.units[unit.offset] = {record.size() + header, record.u32(136)};
  }
  EXPECT_EQ(reader.accounting().bytes(), bytes.size());
  return read;
}

void judge(const DamagedLog& log, const Read& seen, Outcome& outcome) {
  std::set<std::uint64_t> begins;
  std::set<std::uint32_t> touched;  // may come out from what is left of them
  for (const DamagedLog::Unit& unit : log.units()) {
    if (!unit.headTouched) begins.insert(unit.at);
    if (unit.touched) {
      touched.insert(unit.sequenceId);
      continue;
    }
    ++outcome.untouched;
    const auto read = seen.units.find(unit.at);
    if (read != seen.units.end() && read->second.size == unit.size) ++outcome.found;
  }
  for (const auto& [offset, unit] : seen.units) {
    const bool isOne = begins.count(offset) != 0 || touched.count(unit.sequenceId) != 0;
    if (!isOne) ++outcome.falseEvents;
  }
}

struct Kind {
  const char* name;
  std::function<void(DamagedLog&)> damage;
};

const Kind kKinds[] = {
    {"zeros",         [](DamagedLog& log) { log.overwrite(0); }         },
    {"noise",         [](DamagedLog& log) { log.overwrite(-1); }        },
    {"0xFF",          [](DamagedLog& log) { log.overwrite(0xFF); }      },
    {"cut",           [](DamagedLog& log) { log.cut(); }                },
    {"insertion",     [](DamagedLog& log) { log.insert(); }             },
    {"wrong length",  [](DamagedLog& log) { log.changeALength(); }      },
    {"zeros behind",  [](DamagedLog& log) { log.append(100000, 0); }    },
    {"0xFF behind",   [](DamagedLog& log) { log.append(70000, '\xFF'); }},
    {"begins inside", [](DamagedLog& log) { log.beginInsideARecord(); } },
};

void expectFound(const Kind& kind, LogForm form, int places, double least) {
  Outcome outcome;
  for (std::uint32_t round = 0; round < 12; ++round) {
    DamagedLog log(round * 7 + static_cast<std::uint32_t>(places), form, 300);
    for (int place = 0; place < places; ++place) kind.damage(log);
    const std::size_t before = outcome.falseEvents;
    judge(log, readAll(log.bytes(), LogForm::automatic), outcome);
    EXPECT_EQ(outcome.falseEvents, before) << kind.name << ", round " << round;
  }
  const double share = static_cast<double>(outcome.found) / static_cast<double>(outcome.untouched);
  EXPECT_GE(share, least) << kind.name << ", places: " << places;
}

TEST(DamagedLogs, LoseNothingThatIsUntouched) {
  for (const Kind& kind : kKinds) {
    for (const int places : {1, 5}) {
      if (places == 5 && &kind - kKinds >= 6) continue;
      expectFound(kind, LogForm::messages, places, places == 1 ? 0.999 : 0.995);
      expectFound(kind, LogForm::records, places, 0.99);
    }
  }
}

}  // namespace
}  // namespace mpuevent::log
