// What the system configuration process logs, and the two processes that log the same records.
#include <initializer_list>

#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

Payload at(std::uint16_t line, std::string_view file, std::string_view function) {
  const std::size_t space = 29 - file.size();
  return Payload().u16(line).text(file).field(function, space);
}

/// Words and a text, behind the place that logged them.
Payload words(Payload place, std::initializer_list<std::uint32_t> values, std::string_view text) {
  for (const std::uint32_t value : values) place.u32(value);
  return place.text(text);
}

Payload lockManager(Payload place, std::uint32_t holdsLocks, std::string_view text) {
  return place.u32(3)
      .u32(1)
      .u8(5)
      .u8(12)
      .u8(2)
      .u8(7)
      .u8(1)
      .u8(12)
      .u8(4)
      .u8(0)
      .u32(holdsLocks)
      .u32(418)
      .u8(12)
      .u8(3)
      .u16(260)
      .u8(7)
      .u8(4)
      .u16(0x0102)
      .u32(418)
      .u32(1536)
      .text(text);
}

Payload persistentMemory(Payload place) {
  for (const std::uint32_t word : {11U, 12U, 0xFFFFFFFFU, 1U, 0U, 1U, 0U, 1U}) place.u32(word);
  place.u8(2).zeros(3);
  for (std::uint32_t i = 0; i < 32; ++i) place.u32(0x00010000 + i * 0x0700);
  for (std::uint32_t i = 0; i < 32; ++i) place.u32(96 + i * 40);
  for (std::uint32_t i = 0; i < 32; ++i) place.u8(i % 5 == 2 ? 1 : 0);
  for (std::uint32_t i = 0; i < 32; ++i) place.u32(0x10004A00 + i * 0x24);
  for (std::uint32_t i = 0; i < 32; ++i) place.u32(0x10007C10 + i * 0x24);
  return place;
}

Payload block(std::string_view text) {
  return at(611, "sccDump.c", "sccDumpBlock").text(text).u32(0x002A80FF).bytes("scc\x7F");
}

}  // namespace

std::vector<Sample> samplesOfSYSTEM_CONFIGMP() {
  return {
      Sample(2000, 1, informational, managementEvents, Payload().text("boot complete")),
      Sample(2000, 1, error, systemEvents,
             at(1042, "sccMain.c", "sccCheckVersion")
                 .text("sccCheckVersion(): image 4.12 <= 4.13; keeping the active image")),
      Sample(2005, 1, warning, managementEvents, block("unexpected reply from task 12. Dump:")),
      Sample(2005, 1, informational, managementEvents, Payload().text("short dump").u32(0x0A0B)),
      Sample(2010, 1, error, systemEvents, at(88, "sccShm.c", "sccAttach").u32(0x53434301)),
      Sample(2011, 1, error, managementEvents,
             words(at(233, "sccLock.c", "sccLockObject"), {0x80, 0x02000000, 7, 418, 3, 4, 0x0102},
                   "object is locked by task 9; waiting since 00:00:04")),
      Sample(2012, 1, warning, systemEvents, Payload().u32(0xFFFFFFFE)),
      Sample(2013, 1, warning, managementEvents,
             words(at(512, "sccMmsg.c", "sccSend"),
                   {0x02000107, 23, 18, 116, 0xFFFFFF92, 90211, 0xC0A80001, 2, 0xFFFF0000},
                   "no answer: endpoint 18 is gone")),
      Sample(2015, 1, error, managementEvents,
             words(at(77, "cee.c", "ceeRequest"), {2, 18, 0x02000107, 30, 500000, 0x1001A2B4, 0, 0},
                   "request timed out")),
      Sample(2016, 1, warning, managementEvents,
             words(Payload(), {3, 18, 90211, 5, 250, 0x1001A2B4, 0x1003FF00, 0x1003FF20}, "late")),
      Sample(2017, 1, informational, managementEvents,
             words(at(140, "cee.c", "ceeTimer"),
                   {1, 60, 0, 1, 0, 0x1001A2C8, 0x10040010, 0x10040018}, "heartbeat armed")),
      Sample(2018, 1, warning, managementEvents,
             lockManager(at(908, "ddlm.c", "ddlmGrant"), 1, "queue of class 7 is full")),
      Sample(2019, 1, error, managementEvents, persistentMemory(at(310, "cpm.c", "cpmDump"))),
      Sample(2014, 1, informational, managementEvents, Payload().u32(0x02030405)),
  };
}

std::vector<Sample> samplesOfDDLMMP() {
  return {
      Sample(2018, 1, error, managementEvents,
             lockManager(at(951, "ddlmPeer.c", "ddlmReplicate"), 0, "peer lost")),
      Sample(2011, 1, warning, managementEvents,
             words(at(402, "ddlmTask.c", "ddlmRelease"), {1, 0, 2, 9, 9, 5, 0},
                   "ddlmRelease(): status=5")),
  };
}

std::vector<Sample> samplesOfAIMMP() {
  return {
      Sample(2000, 1, warning, managementEvents,
             at(64, "aimConfigurationTable.cpp", "load").text("table <defaults> is used")),
      Sample(2016, 1, error, managementEvents,
             words(at(219, "aimCee.cpp", "onResponse"),
                   {4, 23, 90544, 10, 0, 0x10022310, 0x10022344, 1}, "response without request")),
  };
}

}  // namespace mpuevent::samples
