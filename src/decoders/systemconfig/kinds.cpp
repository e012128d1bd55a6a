#include "decoders/systemconfig/kinds.h"

#include <cstddef>
#include <cstdint>
#include <span>

#include "decoders/configuration.h"
#include "decoders/systemconfig/summary.h"
#include "event/Codes.h"
#include "event/Fields.h"
#include "event/Lists.h"
#include "event/Tables.h"
#include "event/Tags.h"

namespace mpuevent::systemconfig {

namespace {

using enum Width;
using enum Format;

// The layouts. Offsets count from the start of the event's data. A text follows each layout but
// those of the shared memory and of the persistent memory.

constexpr Field sharedMemoryKey = {"ShMem_Key", 0, u32, dec};

constexpr Field lockClassFields[] = {
    {"Read",  0, u32, hexUpper8},
    {"Write", 4, u32, hexUpper8},
};

constexpr Field lockObjectFields[] = {
    {"Class", 8,  u32, dec},
    {"Index", 12, u32, dec},
};

constexpr Field requestType = {"Request_Type", 16, u32, dec};
constexpr CodeText requestTypes[] = {
    {1, "DDLM_begin"     },
    {2, "DDLM_end"       },
    {3, "DDLM_get EX"    },
    {4, "DDLM_get SH"    },
    {5, "DDLM_release EX"},
    {6, "DDLM_release SH"},
    {7, "DDLM_release"   },
    {8, "DDLM_sync"      },
};

constexpr Field transactionStatus = {"Transaction_Status", 20, u32, dec};
constexpr CodeText transactionStatuses[] = {
    {0, "IndeterminateSyncTime"                   },
    {1, "IndeterminateSyncTimePersistenceRequired"},
    {3, "TransactionContinues"                    },
    {4, "TransactionContinuesPersistenceRequired" },
    {6, "TransactionCompletePersistenceOptional"  },
    {8, "TransactionComplete"                     },
};

constexpr Field replicationParameter = {"Replication_Parameter", 24, u32, hexUpper8};
constexpr std::size_t lockText = 28;
static_assert(endWithin(lockText, lockClassFields, lockObjectFields));

constexpr Field messageFields[] = {
    {"OpCode_Protocol", 0,  u8,  dec      }, // the high byte of a word,
    {"OpCode_Type",     0,  u24, dec      }, // and its other three
    {"Requestor",       4,  u32, dec      },
    {"Dest_EP",         8,  u32, dec      },
    {"MMSG_Len",        12, u32, dec      },
    {"Return_Code",     16, u32, dec      },
    {"Handle",          20, u32, dec      },
    {"General_Use1",    24, u32, hexUpper8},
    {"General_Use2",    28, u32, hexUpper8},
    {"General_Use3",    32, u32, hexUpper8},
};
constexpr Layout message = {36, packed<messageFields>};

constexpr Field requestFields[] = {
    {"Thread_Index",         0,  u32, dec      },
    {"Dest_Endpoint",        4,  u32, dec      },
    {"Request_Opcode",       8,  u32, hexUpper8},
    {"Timeout_seconds",      12, u32, dec      },
    {"Timeout_microseconds", 16, u32, dec      },
    {"pSema",                20, u32, hexUpper8},
    {"pMmsgLh",              24, u32, hexUpper8},
    {"pTimedout",            28, u32, hexUpper8},
};
constexpr Layout request = {32, packed<requestFields>};

constexpr Field timerFields[] = {
    {"Thread_Index",          0,  u32, dec      },
    {"Delay_seconds",         4,  u32, dec      },
    {"Delay_microseconds",    8,  u32, dec      },
    {"isRecurring",           12, u32, trueFalse},
    {"isRelativeToWallClock", 16, u32, trueFalse},
    {"pSema",                 20, u32, hexUpper8},
    {"pMmsg",                 24, u32, hexUpper8},
    {"pCounter",              28, u32, hexUpper8},
};
constexpr Layout timer = {32, packed<timerFields>};

constexpr Field lockManagerFields[] = {
    {"TSS_RdLocks",           0,  u32, dec      },
    {"TSS_WrLocks",           4,  u32, dec      },
    {"TSS_Priority",          8,  u8,  dec      },
    {"TSS_TaskId",            9,  u8,  dec      },
    {"TSS_TaskStatus",        10, u8,  dec      },
    {"CLS_ClassId",           11, u8,  dec      },
    {"CLS_ClassStatus",       12, u8,  dec      },
    {"CLS_TaskId",            13, u8,  dec      },
    {"CLS_RequestCount",      14, u8,  dec      },
    {"CLS_HoldsLocks",        16, u32, trueFalse},
    {"OLS_ObjectIx",          20, u32, dec      },
    {"OLS_OwningTask",        24, u8,  dec      },
    {"OLS_ObjectStatus",      25, u8,  dec      },
    {"OLS_ReferenceCount",    26, u16, dec      },
    {"TES_ClassId",           28, u8,  dec      },
    {"TES_TransactionStatus", 29, u8,  dec      },
    {"TES_ReplicationParam",  30, u16, dec      },
    {"TES_ObjectIx",          32, u32, dec      },
    {"TES_DataLength",        36, u32, dec      },
};
constexpr Layout lockManager = {40, packed<lockManagerFields>};

constexpr Field persistentMemoryFields[] = {
    {"cpmControlFileFd",      0,  u32, dec},
    {"cpmDataFile0Fd",        4,  u32, dec},
    {"cpmDataFile1Fd",        8,  u32, dec},
    {"cpmInit",               12, u32, dec},
    {"cpmDone",               16, u32, dec},
    {"cpmFlush",              20, u32, dec},
    {"cpmSetAllObjectsValue", 24, u32, dec},
    {"cpmStart",              28, u32, dec},
    {"cpmDebug",              32, u8,  dec},
};

// Arrays with an entry for each class of objects. Width and format are those of one entry.
constexpr std::uint32_t objectClasses = 32;
constexpr Field persistentMemoryArrays[] = {
    {"cpmClassOffset",       36,  u32, dec},
    {"cpmClassSize",         164, u32, dec},
    {"cpmClassDirty",        292, u8,  dec},
    {"cpmGetObjectAddr",     324, u32, dec},
    {"cpmReleaseObjectAddr", 452, u32, dec},
};

/// Writes `Text`, the text that begins at `at`. Returns the summary, which is a part of it.
std::string_view writeTextAt(SafeBody& body, RecordView data, std::size_t at) {
  const std::string_view text = data.text(at);
  body.recordElement("Text", text);
  return text.substr(0, summaryLength(data.from(at)));
}

std::string_view writeFieldsAndText(SafeBody& body, RecordView data, const Layout& layout) {
  writeFields(body.literals(), data, layout.rows);
  return writeTextAt(body, data, layout.size);
}

/// Writes an element for each entry: "[1], value [x]" for the first class of objects. A bracket
/// needs an escape like those of a record's text.
void writeArray(SafeBody& body, RecordView data, PackedTags tags, Number array) {
  const std::size_t width = byteCount(array.width);
  const List entries = {array.offset, width, objectClasses};
  ElementRun elements(body.literals());
  forEachWholeEntry(data, entries, [&](std::size_t at, std::uint32_t index) {
    char* place = elements.open(tags, 2 * longestNumber);
    place = putDecimal(putLiteral(place, "\\["), index + 1);
    place = putNumber(putLiteral(place, "\\], value \\["), array.format,
                      data.numberBefore(at + width, width));
    elements.close(tags, putLiteral(place, "\\]"));
    body.countEscapes(4);
  });
}

std::string_view writeText(SafeBody& body, const SccPayload& event) {
  return writeTextAt(body, event.data, 0);
}

std::string_view writeDump(SafeBody& body, const SccPayload& event) {
  const std::string_view summary = writeTextAt(body, event.data, 0);
  const int behindText = static_cast<int>(event.data.text(0).size()) + 1;
  // If the text takes up all of the data, it is the text itself that is dumped.
  const int skip = behindText <= event.lengthBehindLocation ? behindText : 0;
  // The size of a location block is taken off even if there is none, so that such a record shows
  // no bytes: the output wants it so.
  const int count = event.lengthBehindLocation - skip;
  configuration::writeDump(body.literals(), event.data, static_cast<std::size_t>(skip), count);
  return summary;
}

std::string_view writeSharedMemory(SafeBody& body, const SccPayload& event) {
  writeField(body.literals(), event.data, sharedMemoryKey);
  return "Shared Memory Event";
}

std::string_view writeLock(SafeBody& body, const SccPayload& event) {
  body.literals().openGroup("Lock_Classes");
  writeFields(body.literals(), event.data, packed<lockClassFields>);
  body.literals().closeGroup("Lock_Classes");
  body.literals().openGroup("Object");
  writeFields(body.literals(), event.data, packed<lockObjectFields>);
  body.literals().closeGroup("Object");
  writeCode(body.literals(), event.data, requestType, packed<requestTypes>);
  writeCode(body.literals(), event.data, transactionStatus, packed<transactionStatuses>);
  writeField(body.literals(), event.data, replicationParameter);
  return writeTextAt(body, event.data, lockText);
}

std::string_view writeMessage(SafeBody& body, const SccPayload& event) {
  return writeFieldsAndText(body, event.data, message);
}

std::string_view writeRequest(SafeBody& body, const SccPayload& event) {
  return writeFieldsAndText(body, event.data, request);
}

std::string_view writeResponse(SafeBody& body, const SccPayload& event) {
  return writeFieldsAndText(body, event.data, configuration::response);
}

std::string_view writeTimer(SafeBody& body, const SccPayload& event) {
  return writeFieldsAndText(body, event.data, timer);
}

std::string_view writeLockManager(SafeBody& body, const SccPayload& event) {
  return writeFieldsAndText(body, event.data, lockManager);
}

std::string_view writePersistentMemory(SafeBody& body, const SccPayload& event) {
  writeFields(body.literals(), event.data, packed<persistentMemoryFields>);
  for (const auto& row : packed<persistentMemoryArrays>) {
    writeArray(body, event.data, PackedTags{row.closingTag.view()}, row.number());
  }
  return "Persistent Memory Event";
}

}  // namespace

SccPayload::SccPayload(const Record& record)
    : data(record.payload()),
      lengthBehindLocation(record.structLength() - static_cast<int>(LocationBlock::size)) {
  // There is a location block only if something stands behind it.
  if (lengthBehindLocation <= 0) return;
  location = LocationBlock(data);
  data = data.from(LocationBlock::size);
}

std::string_view writeKind(Kind kind, SafeBody& body, const SccPayload& event) {
  switch (kind) {
    case Kind::text:
      return writeText(body, event);
    case Kind::dump:
      return writeDump(body, event);
    case Kind::sharedMemory:
      return writeSharedMemory(body, event);
    case Kind::lock:
      return writeLock(body, event);
    case Kind::message:
      return writeMessage(body, event);
    case Kind::request:
      return writeRequest(body, event);
    case Kind::response:
      return writeResponse(body, event);
    case Kind::timer:
      return writeTimer(body, event);
    case Kind::lockManager:
      return writeLockManager(body, event);
    case Kind::persistentMemory:
      break;
  }
  return writePersistentMemory(body, event);
}

}  // namespace mpuevent::systemconfig
