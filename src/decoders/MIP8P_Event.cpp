#include <MPUEvent/MIP8P_Event.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "decoders/iomgr/EventClasses.h"
#include "event/OwnEventId.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace mpuevent::mip {

namespace {

using namespace iomgr;
using enum iomgr::RecordKind;
using Pegasus::MIP_EVL;
using Pegasus::Quarn_Event;
using Pegasus::String;

constexpr Field headFields[] = {
    {"MIP_Event_Type",     0,  Width::u32, Format::dec},
    {"MIP_Event_Id",       4,  Width::u32, Format::dec},
    {"MIP_Event_Line_Num", 12, Width::u32, Format::dec},
};

void writeFile(BodyWriter& body, const DataArea& data, NameBuffer& name) {
  body.element("File", overwriteName(data, name));
}

constexpr EventRow managementEvents[] = {
    {1,  "MIP8P MQX Event",               lwsem    },
    {3,  "MIP8P Unexpected Interrupt",    interrupt},
    {4,  "MIP8P QMIR Event",              qmir     },
    {5,  "MIP8P Unexpected Message Type", message  },
    {6,  "MIP8P Unexpected Error Event",  nothing  },
    {12, "MIP8P Invalid ARC Number",      nothing  },
    {13, "MIP8P R5K_MPU MBOX Event",      nothing  },
    {14, "MIP8P MSA Event",               msa      },
    {15, "MIP8P ARC found halted",        nothing  },
    {16, "MIP8P ARC found hung",          nothing  },
};

constexpr EventRow isrEvents[] = {
    {1, "Proxy MQX Event",          lwsem    },
    {3, "ISR Unexpected Interrupt", nothing  },
    {7, "ISR Installation Failed",  interrupt},
    {8, "ISR Overflow",             nothing  },
};

constexpr EventRow startupEvents[] = {
    {1,    "MIP8P Startup MQX Error", nothing},
    {1001, "MIP8P Starting ARCs",     nothing},
    {1002, "MIP8P ARCs started",      nothing},
};

constexpr EventRow mmsgEvents[] = {
    {1,  "MMSG MQX Event",     lwsem  },
    {10, "MMSG Invalid Param", nothing},
    {11, "MMSG Invalid MMSG",  mmsg   },
};

constexpr EventRow assertEvents[] = {
    {anyNumber, "ASSERT Error", file},
};

constexpr EventRow dmaEvents[] = {
    {1,   "DMA MQX Event",              lwsem  },
    {3,   "MIP8P Unexpected Interrupt", intStat},
    {10,  "Database Invalid Param",     nothing},
    {14,  "MIP8P MSA Event",            msa    },
    {502, "MIP8P p32 Xcore Interrupt",  intStat},
};

// No class has these events, nor `mathEvents`: only the exported functions show them.
constexpr EventRow databaseEvents[] = {
    {2,  "Database ENOMEM",        nothing},
    {8,  "Database Overflow",      nothing},
    {10, "Database Invalid Param", nothing},
};
static_assert(rising(databaseEvents, &EventRow::number));

// The classes that have events.
enum MipClass : std::uint16_t {
  managementClass = 1,
  isrClass = 3,
  startupClass = 4,
  mmsgClass = 6,
  evlClass = 8,
  assertClass = 9,
  dmaClass = 12,
};

constexpr EventClass classes[] = {
    {managementClass, "MIP Task Event",                         managementEvents},
    {2,               "MIP Unknown Event",                      {}              },
    {isrClass,        "MIP ISR Event",                          isrEvents       },
    {startupClass,    "MIP Startup Task Event",                 startupEvents   },
    {5,               "MIP Unknown Event",                      {}              },
    {mmsgClass,       "MIP Management Message Event",           mmsgEvents      },
    {7,               "MIP Redundant Controller Process Event", {}              },
    {evlClass,        "MIP EVL Event",                          evlEvents       },
    {assertClass,     "MIP Resource Assert Event",              assertEvents    },
    {10,              "MIP Unknown Event",                      {}              },
    {11,              "MIP Unknown Event",                      {}              },
    {dmaClass,        "MIP DMA Event",                          dmaEvents       },
};
static_assert(classesRise(classes));

std::optional<FoundClass> mipClassOf(std::uint32_t number) {
  return classOf(packedClasses<classes>(), number);
}

/// Sets Summary and returns the Body.
String decode(Quarn_Event& event, const EventPayload& payload,
              const std::optional<FoundClass>& eventClass) {
  trace({"MIP8P_Event", 119}, {"MIP_Event: Length=0x", payload.dataLength()});
  BodyBuffer body;
  writeFields(body, payload, packed<headFields>);
  if (eventClass && !eventClass->events.empty()) {
    event.setSummary(writeEvent(body, payload, eventClass->events, writeFile));
  }
  return body.string();
}

/// Copies the elements and a NUL to a caller's buffer and returns the place of the NUL, where the
/// next call may go on. Without a buffer nothing is copied.
char* copyTerminated(BodyWriter& elements, char* place) {
  if (place == nullptr) return nullptr;
  elements.tellElements();
  const std::string_view text = elements.view();
  char* end = std::copy(text.begin(), text.end(), place);
  *end = '\0';
  return end;
}

char* copyClass(Events events, Quarn_Event& event, const MIP_EVL* payload, char* place) {
  BodyBuffer body;
  writeTrusted(body, event, events, writeFile, payload);
  return copyTerminated(body, place);
}

char* copyRecord(RecordKind kind, const void* record, char* place) {
  BodyBuffer body;
  writeTrusted(body, kind, record);
  return copyTerminated(body, place);
}

}  // namespace

}  // namespace mpuevent::mip

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::iomgr;
using namespace mpuevent::mip;

MIP8P_Event::MIP8P_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(withOwnEventId(bytes), static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  if (record.id() != 1) {
    showUnknown(*this, record, {"MIP8P_Event", 96}, "Unhandled Event by MIP", NumberBase::decimal);
    return;
  }
  const EventPayload payload(record.payload());
  const std::optional<FoundClass> eventClass = mipClassOf(payload.eventClass());
  setEventID(asciiString(eventClass ? eventClass->eventId : "MIP Unknown Event"));
  setBody(decode(*this, payload, eventClass));
}

MIP8P_Event::~MIP8P_Event() = default;

String MIP8P_Event::get_MIP8P_event_body(const EmpEvLogMsg_s* record) {
  if (record == nullptr) return {};
  const EventPayload payload(Record::trusting(record).payload());
  return decode(*this, payload, mipClassOf(payload.eventClass()));
}

char* MIP8P_Event::get_MIP8P_management_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(mipClassOf(managementClass)->events, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_isr_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(mipClassOf(isrClass)->events, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_startup_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(mipClassOf(startupClass)->events, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_mmsg_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(mipClassOf(mmsgClass)->events, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_evl_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(mipClassOf(evlClass)->events, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_assert_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(mipClassOf(assertClass)->events, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_dma_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(mipClassOf(dmaClass)->events, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_database_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(packed<databaseEvents>, *this, payload, place);
}
char* MIP8P_Event::get_MIP8P_math_class_event_body(MIP_EVL* payload, char* place) {
  return copyClass(packed<mathEvents>, *this, payload, place);
}

char* MIP8P_Event::get_MIP8P_lwsem_event_body(const MIP_EVL_LWSEM* record, char* place) {
  return copyRecord(RecordKind::lwsem, record, place);
}
char* MIP8P_Event::get_MIP8P_mmsg_event_body(const MIP_EVL_MMSG* record, char* place) {
  return copyRecord(RecordKind::mmsg, record, place);
}
char* MIP8P_Event::get_MIP8P_msa_event_body(const MIP_EVL_MSA_Q_EVENT* record, char* place) {
  return copyRecord(RecordKind::msa, record, place);
}

}  // namespace Pegasus
