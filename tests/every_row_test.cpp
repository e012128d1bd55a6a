// A line for every row of the decoders' tables of codes and events, and for those beside them,
// compared with every_row.txt.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include "decoders/EventPayload.h"

namespace {

using namespace mpuevent::support;

/// Collects the lines; lines that tell the same, one behind the other, become one.
class Lines {
 public:
  /// `show` makes of an event's texts what is told of it.
  template <class Show>
  void add(const std::string& label, const RecordBuilder& record, Show show) {
    const auto [id, summary, body] = textsOf(*decode(record.str()));
    std::string told = id;
    told += " | " + summary + " | " + show(body);
    if (told != last_) text_ += label + ": " + told + "\n";
    last_ = told;
  }
  void add(const std::string& label, const RecordBuilder& record) {
    add(label, record, [](const std::string& body) { return body; });
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
  std::string last_;
};

std::string label(const char* what, std::uint32_t code) {
  return std::string(what) + " " + std::to_string(code);
}

RecordBuilder recordOf(std::uint8_t source, std::uint32_t id, const Payload& payload = {}) {
  return RecordBuilder().source(source).id(static_cast<std::uint16_t>(id)).payload(payload);
}

/// The I/O manager's or MIP's events, and the records that each carries.
void addEvents(Lines& lines, const char* what, std::uint8_t source, std::uint32_t classes) {
  const Payload data = ramp(492).at(0).u8(0);  // where an assert has its text
  for (std::uint32_t eventClass = 0; eventClass <= classes; ++eventClass) {
    for (const std::uint32_t number : eventNumbers()) {
      const Payload payload = eventPayload(eventClass, number, 492, data);
      lines.add(label(label(what, eventClass).c_str(), number), recordOf(source, 1, payload),
                recordsIn);
    }
  }
}

/// An event for each record of the I/O manager, every field shown.
void addRecords(Lines& lines) {
  const std::pair<std::uint32_t, std::uint32_t> events[] = {
      {1,  1   },
      {1,  26  },
      {1,  32  },
      {2,  3   },
      {3,  25  },
      {3,  517 },
      {6,  12  },
      {6,  501 },
      {7,  2   },
      {14, 8   },
      {20, 518 },
      {24, 1003},
      {25, 29  },
      {25, 30  },
      {26, 509 },
      {27, 1   },
      {28, 31  },
  };
  for (const auto& [eventClass, number] : events) {
    lines.add(label(label("iomgr record", eventClass).c_str(), number),
              recordOf(5, 1, eventPayload(eventClass, number, 492, ramp(492))));
  }
}

void addIscsi(Lines& lines) {
  const Payload whole = ramp(72).at(0).u16(4).at(18).u16(2).at(46).u8(4).u8(3).at(68).u16(6);
  lines.add("iscsi login", recordOf(22, 3, Payload(whole).at(72).text("iqn.i").text("iqn.t")));
  for (std::uint32_t id = 0; id <= 10; ++id) {
    lines.add(label("iscsi event", id), recordOf(22, id));
  }
  for (std::uint16_t code = 0; code <= 47; ++code) {
    lines.add(label("iscsi status", code), recordOf(22, 9, Payload().u16(1).u16(code)));
  }
  for (std::uint32_t reason = 0; reason <= 15; ++reason) {
    const Payload socket = Payload().u16(2).u16(5).u32(7).at(20).u32(reason);
    lines.add(label("iscsi close reason", reason), recordOf(22, 2, socket));
  }
  for (std::uint8_t code = 0; code <= 4; ++code) {
    const Payload login = Payload().u16(4).at(18).u16(code).at(47).u8(code).padTo(60);
    lines.add(label("iscsi session and authentication", code), recordOf(22, 3, login));
    const Payload request = Payload().u16(5).at(8).u8(3).u8(static_cast<std::uint8_t>(code * 5));
    lines.add(label("iscsi stages", code), recordOf(22, 6, request));
  }
}

void addSignals(Lines& lines) {
  const auto cause = [](const std::string& body) {
    return body.substr(0, body.find("</Signal_info"));
  };
  for (std::uint32_t code = 0; code <= 1; ++code) {
    for (const std::uint32_t signal : {4U, 5U, 7U, 8U, 10U, 11U}) {
      const Payload fault =
          Payload().u32(signal).u32(0).u32(0x00030000 | code).bytes(ramp(20).str());
      lines.add(label(label("fault", signal).c_str(), code), recordOf(18, 4, fault), cause);
    }
    for (std::uint32_t kind = 0; kind <= 6; ++kind) {
      const Payload info = Payload().u32(17).u32(0).u32(kind << 16 | code).bytes(ramp(20).str());
      lines.add(label(label("signal", kind).c_str(), code), recordOf(18, 4, info), cause);
    }
  }
}

void addConfiguration(Lines& lines) {
  for (std::uint32_t id = 1999; id <= 2020; ++id) {
    for (std::uint8_t type = 0; type <= 4; ++type) {
      const Payload located = Payload().u16(0xFDE8).text("ddlm.c").field("grant", 23);
      lines.add(label(label("system configuration", id).c_str(), type),
                recordOf(23, id, Payload(located).bytes(ramp(40).text("late").str())).type(type));
    }
  }
  for (std::uint32_t code = 0; code <= 9; ++code) {
    const Payload lock = ramp(48).u32(code).u32(code);
    lines.add(label("system configuration lock", code), recordOf(23, 2011, lock));
  }
  for (std::uint32_t id = 999; id <= 1042; ++id) {
    lines.add(label("network configuration", id),
              recordOf(24, id, Payload().text("text").bytes(ramp(60).str())));
  }
}

std::string everyRow() {
  Lines lines;
  addEvents(lines, "iomgr", 5, 33);
  addEvents(lines, "mip", 7, 13);
  addRecords(lines);
  for (std::uint32_t id = 0; id <= 200; ++id) {
    lines.add(label("cache", id), recordOf(3, id, ramp(152)));
  }
  addIscsi(lines);
  for (std::uint32_t code = 0; code <= 19; ++code) {
    const auto protocol = static_cast<std::uint8_t>(code);
    const Payload payload =
        Payload().u32(1).u32(code).u32(code).at(24).u32(0x800001).at(40).u8(protocol);
    lines.add(label("isns event, reason and protocol", code), recordOf(31, 1, payload));
  }
  addSignals(lines);
  addConfiguration(lines);
  return lines.text();
}

TEST(EveryRow, ReadsAsBefore) {
  std::ifstream file(MPUEVENT_EVERY_ROW);
  std::ostringstream expected;
  expected << file.rdbuf();
  const std::string rows = everyRow();
  if (rows == expected.str()) return;
  std::ofstream("every_row.txt") << rows;
  FAIL() << "the rows are in every_row.txt; compare them with " MPUEVENT_EVERY_ROW;
}

}  // namespace
