// A line for every row of the decoders' tables of codes and events, and for those beside them.
#include <MPUEvent/IOMGR8P_Event.h>
#include <MPUEvent/MIP8P_Event.h>
#include <MPUEvent/STARTUPMP_Event.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "decoders/EventPayload.h"
#include "support/GoldenRows.h"

namespace {

using namespace mpuevent::support;
using Pegasus::IOMGR8P_Event;
using Pegasus::MIP8P_Event;

std::string label(const char* what, std::uint32_t code) {
  return std::string(what) + " " + std::to_string(code);
}

RecordBuilder recordOf(std::uint8_t source, std::uint32_t id, const Payload& payload = {}) {
  return RecordBuilder().source(source).id(static_cast<std::uint16_t>(id)).payload(payload);
}

/// The I/O manager's or MIP's events, and the records that each carries.
void addEvents(GoldenRows& rows, const char* what, std::uint8_t source, std::uint32_t classes) {
  const Payload data = ramp(492).at(0).u8(0);  // where an assert has its text
  for (std::uint32_t eventClass = 0; eventClass <= classes; ++eventClass) {
    for (const std::uint32_t number : eventNumbers()) {
      const Payload payload = eventPayload(eventClass, number, 492, data);
      rows.add(label(label(what, eventClass).c_str(), number), recordOf(source, 1, payload),
               recordsIn);
    }
  }
}

/// An event for each record of the I/O manager, every field shown.
void addRecords(GoldenRows& rows) {
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
    rows.add(label(label("record", eventClass).c_str(), number),
             recordOf(5, 1, eventPayload(eventClass, number, 492, letters(492))));
  }
}

void addIscsi(GoldenRows& rows) {
  const Payload whole = letters(72).at(0).u16(4).at(18).u16(2).at(46).u8(4).u8(3).at(68).u16(6);
  rows.add("login", recordOf(22, 3, Payload(whole).at(72).text("iqn.i").text("iqn.t")));
  const Payload changes[] = {Payload(whole).at(8).u32(0).at(18).u16(300),
                             Payload(whole).at(12).u16(0).u32(0x102),
                             Payload(whole).at(40).u8(0).u8(0),
                             Payload(whole).at(40).u8(1).u8(0),
                             Payload(whole).at(42).u8(0).u8(1),
                             Payload(whole).at(56).u16(3).u16(2),
                             Payload(whole).at(60).u16(0).u16(0x102),
                             Payload(whole).at(60).u16(0x102).u16(0),
                             Payload(whole).at(68).u16(0xFFFF),
                             Payload(whole).at(68).u16(7),
                             Payload(whole).at(70).u16(0)};
  for (Payload changed : changes) {
    changed.padTo(72).bytes(std::string_view("iqn.i<\0iqn.t", 13));
    rows.add("login changed", recordOf(22, 3, changed));
  }
  for (const std::uint32_t socket : {65534U, 65535U, 0xFFFFFFFFU}) {
    for (const auto status : std::initializer_list<std::uint16_t>{0, 5, 6, 65535}) {
      rows.add(label("socket", socket), recordOf(22, 9, Payload().u16(1).u16(status).u32(socket)));
    }
  }
  for (std::uint32_t id = 0; id <= 10; ++id) {
    rows.add(label("event", id), recordOf(22, id));
  }
  for (std::uint16_t code = 0; code <= 47; ++code) {
    rows.add(label("status", code), recordOf(22, 9, Payload().u16(1).u16(code)));
  }
  for (std::uint32_t reason = 0; reason <= 15; ++reason) {
    const Payload socket = Payload().u16(2).u16(5).u32(7).at(20).u32(reason);
    rows.add(label("close reason", reason), recordOf(22, 2, socket));
  }
  for (std::uint8_t code = 0; code <= 4; ++code) {
    const Payload login = Payload().u16(4).at(18).u16(code).at(47).u8(code).padTo(60);
    rows.add(label("session and authentication", code), recordOf(22, 3, login));
    const Payload request = Payload().u16(5).at(8).u8(3).u8(static_cast<std::uint8_t>(code * 5));
    rows.add(label("stages", code), recordOf(22, 6, request));
  }
}

/// Headers that begin like this, and names and parameters of these lengths behind a header.
void addIscsiRequests(GoldenRows& rows) {
  using namespace std::string_view_literals;
  for (const auto start :
       std::initializer_list<std::uint16_t>{0x4387, 0x0340, 0x033D, 0x0332, 0x0440, 0xC480, 0x3F87,
                                            0x0087, 0x0187, 0x0287, 0x0587, 0x1187, 0x2387}) {
    const Payload header = letters(56).at(0).u16(5).u16(33).at(8).u16(start).at(56);
    rows.add(label("header", start),
             recordOf(22, 6, Payload(header).at(56).u16(6).u16(4).text("iqn.h").text("iqn.a")));
  }
  // A text ends with its NUL and not where the next begins; no first value, no second.
  const std::pair<std::string_view, std::string_view> parameters[] = {
      {"\0\0\0\0\0\5\0\4\0\0"sv, "Key1\0abc"sv          },
      {"\0\2\0\3\0\4\0\5\0\6"sv, "a\0b+\0c++\0d+++\0e"sv},
      {"\0\2\0\0\0\1\0\0\0\7"sv, "abcd\0e"sv            },
      {"\0\0\0\7\0\0\0\2\1\0"sv, "Target\0No"sv         },
      {"\0\0\0\0\0\0\0\0\0\0"sv, "unused"sv             },
  };
  for (const auto& [lengths, texts] : parameters) {
    Payload data = letters(56).at(0).u16(3).u16(9).at(8).u16(0x4387);
    rows.add("parameter", recordOf(22, 9, data.at(56).bytes(lengths).bytes(texts)));
  }
}

void addSignals(GoldenRows& rows) {
  const auto cause = [](const std::string& body) {
    return body.substr(0, body.find("</Signal_info"));
  };
  for (std::uint32_t code = 0; code <= 1; ++code) {
    for (const std::uint32_t signal : {4U, 5U, 7U, 8U, 10U, 11U}) {
      const Payload fault =
          Payload().u32(signal).u32(0).u32(0x00030000 | code).bytes(letters(20).str());
      rows.add(label(label("fault", signal).c_str(), code), recordOf(18, 4, fault), cause);
    }
    for (std::uint32_t kind = 0; kind <= 6; ++kind) {
      const Payload info = Payload().u32(17).u32(0).u32(kind << 16 | code).bytes(letters(20).str());
      rows.add(label(label("signal", kind).c_str(), code), recordOf(18, 4, info), cause);
    }
  }
}

/// The header of a management message stands at the word that its text ends in; a partial message
/// shows as many of its fields as the length tells.
void addStartupMessages(GoldenRows& rows) {
  using namespace std::string_view_literals;
  for (const auto text : {"\n"sv, "abc\n"sv, "abcd\0"sv, "abcdefg\n"sv, "abc\0def\n"sv}) {
    rows.add("message", recordOf(18, 2, letters(80).at(0).bytes(text)));
  }
  for (const std::uint32_t rest : {16U, 17U, 18U, 40U, 41U, 48U, 49U, 52U, 53U, 56U, 57U, ~0U}) {
    const auto length = static_cast<std::uint16_t>(152 + 8 + rest);  // the last one wraps
    const Payload payload = letters(300).at(0).bytes("abcdefg\n");
    rows.add(label("message of", length), recordOf(18, 3, payload).structLength(length));
  }
}

void addSystemConfiguration(GoldenRows& rows) {
  for (std::uint32_t id = 1999; id <= 2020; ++id) {
    for (std::uint8_t type = 0; type <= 4; ++type) {
      const Payload located = Payload().u16(0xFDE8).text("ddlm.c").field("grant", 23);
      rows.add(label(label("event", id).c_str(), type),
               recordOf(23, id, Payload(located).bytes(letters(40).text("late").str())).type(type));
    }
  }
  for (std::uint32_t code = 0; code <= 9; ++code) {
    const Payload lock = letters(48).u32(code).u32(code);
    rows.add(label("lock", code), recordOf(23, 2011, lock));
  }
}

/// Adds what an exported function of a record appends for `size` bytes, of which there is none too
/// many; MIP's functions append to their second argument as well.
template <class Event>
auto functionsOf(GoldenRows& rows) {
  return [&rows]<class Record>(const char* name, char* (Event::*show)(const Record*, char*),
                               std::size_t size) {
    Event event(nullptr, 0);
    char place[4096] = "";
    const std::string data = letters(size).str();
    const std::vector<char> bytes(data.begin(), data.end());
    (event.*show)(reinterpret_cast<const Record*>(bytes.data()), place);
    rows.add(std::string("function of ") + name, place + utf8(event.getBody()));
  };
}

TEST(EveryRow, Vocabularies) {
  GoldenRows rows("vocabularies");
  for (std::uint8_t code = 0; code <= 35; ++code) {
    rows.add(label("source", code), fieldsOf(*decode(recordOf(code, 1).str())).texts[2]);
  }
  for (std::uint8_t code = 0; code <= 15; ++code) {
    rows.add(label("category", code),
             fieldsOf(*decode(RecordBuilder().category(code).str())).texts[3]);
  }
  for (std::uint8_t code = 0; code <= 4; ++code) {
    const auto event = decode(RecordBuilder().type(code).str());
    rows.add(label("type", code),
             std::to_string(fieldsOf(*event).numbers[4]) + " | " + utf8(event->getEventType()));
  }
  rows.check();
}

TEST(EveryRow, IOMGR8P) {
  GoldenRows rows("IOMGR8P");
  addEvents(rows, "event", 5, 33);
  addRecords(rows);
  const auto add = functionsOf<IOMGR8P_Event>(rows);
  add("lwsem", &IOMGR8P_Event::get_IOMGR8P_lwsem_event_body, 8);
  add("isurp", &IOMGR8P_Event::get_IOMGR8P_isurp_event_body, 28);
  add("drp", &IOMGR8P_Event::get_IOMGR8P_drp_event_body, 40);
  add("vt", &IOMGR8P_Event::get_IOMGR8P_vt_event_body, 264);
  add("ext", &IOMGR8P_Event::get_IOMGR8P_ext_event_body, 80);
  add("mmsg", &IOMGR8P_Event::get_IOMGR8P_mmsg_event_body, 20);
  add("dib", &IOMGR8P_Event::get_IOMGR8P_dib_event_body, 492);
  add("sgt", &IOMGR8P_Event::get_IOMGR8P_sgt_event_body, 64);
  add("bcd", &IOMGR8P_Event::get_IOMGR8P_bcd_event_body, 52);
  add("rcd", &IOMGR8P_Event::get_IOMGR8P_rcd_event_body, 40);
  add("rbt", &IOMGR8P_Event::get_IOMGR8P_rbt_event_body, 32);
  add("dlm", &IOMGR8P_Event::get_IOMGR8P_dlm_event_body, 192);
  add("msa", &IOMGR8P_Event::get_IOMGR8P_msa_event_body, 32);
  add("fer", &IOMGR8P_Event::get_IOMGR8P_fer_event_body, 24);
  add("vbgt", &IOMGR8P_Event::get_IOMGR8P_vbgt_event_body, 32);
  add("ndfe", &IOMGR8P_Event::get_IOMGR8P_ndfe_event_body, 12);
  rows.check();
}

TEST(EveryRow, MIP8P) {
  GoldenRows rows("MIP8P");
  addEvents(rows, "event", 7, 13);
  const auto add = functionsOf<MIP8P_Event>(rows);
  add("lwsem", &MIP8P_Event::get_MIP8P_lwsem_event_body, 8);
  add("mmsg", &MIP8P_Event::get_MIP8P_mmsg_event_body, 20);
  add("msa", &MIP8P_Event::get_MIP8P_msa_event_body, 32);
  rows.check();
}

TEST(EveryRow, CACHE18P) {
  GoldenRows rows("CACHE18P");
  for (std::uint32_t id = 0; id <= 200; ++id)
    rows.add(label("bugcheck", id), recordOf(3, id, letters(152)));
  rows.check();
}

TEST(EveryRow, ISCSIMP) {
  GoldenRows rows("ISCSIMP");
  addIscsi(rows);
  addIscsiRequests(rows);
  rows.check();
}

TEST(EveryRow, ISNSC) {
  GoldenRows rows("ISNSC");
  for (std::uint32_t code = 0; code <= 19; ++code) {
    const auto protocol = static_cast<std::uint8_t>(code);
    const Payload payload =
        Payload().u32(1).u32(code).u32(code).at(24).u32(0x800001).at(40).u8(protocol);
    rows.add(label("event, reason and protocol", code), recordOf(31, 1, payload));
  }
  for (const std::uint32_t type : {0x55000001U, 0xAA800001U}) {  // the high byte does not count
    Payload message = letters(116).at(0).u32(1).u32(8).u32(0x80000000).field("isnsc", 8);
    message.at(24).u32(type).at(116).field("iqn.a:b", 224).text("array (7)");
    rows.add(label("message", type), recordOf(31, 1, message));
  }
  rows.check();
}

TEST(EveryRow, STARTUPMP) {
  GoldenRows rows("STARTUPMP");
  addSignals(rows);
  addStartupMessages(rows);
  for (const Pegasus::ArcRegister& row : Pegasus::rtTavo4ArcRegsNames) {
    std::string told = std::to_string(row.offset) + " " + std::to_string(row.widthInBits) + " x" +
                       std::to_string(row.instanceCount);
    for (const auto* field = row.fields; field != nullptr && field->lowestBit >= 0; ++field) {
      told += std::string(" ") + field->name + "(" + std::to_string(field->lowestBit) + ":" +
              std::to_string(field->widthInBits) + " " + std::to_string(field->mask) + ")";
    }
    rows.add(std::string("register ") + row.name, told);
  }
  rows.check();
}

TEST(EveryRow, SYSTEM_CONFIGMP) {
  GoldenRows rows("SYSTEM_CONFIGMP");
  addSystemConfiguration(rows);
  rows.check();
}

TEST(EveryRow, NETWORK_CONFIGMP) {
  GoldenRows rows("NETWORK_CONFIGMP");
  for (std::uint32_t id = 999; id <= 1042; ++id) {
    rows.add(label("event", id), recordOf(24, id, Payload().text("text").bytes(letters(60).str())));
  }
  for (const std::uint32_t status : {0x410U, 0x411U}) {  // event and word need not agree
    const Payload link = Payload().u32(0xFFFFFFF8).u32(0).u32(status).u8(0xA1).u8(0).u8(0xB2);
    for (const std::uint32_t id : {1040U, 1041U})
      rows.add(label("link", id), recordOf(24, id, link));
  }
  rows.check();
}

}  // namespace
