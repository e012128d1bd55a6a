#include <MPUEvent/CACHE18P_Event.h>

#include <array>
#include <charconv>

#include "decoders/cache/layouts.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace mpuevent::cache {

namespace {

struct Bugcheck {
  std::uint8_t ids[5];  ///< `to` stands for all between its neighbours, 0 for none
  std::string_view summary;
  Elements elements;
};

constexpr std::uint8_t lastId = 171;
constexpr std::uint8_t to = 255;

constexpr Bugcheck bugchecks[] = {
    {{1, 3, 4},              "Ran out of free btree nodes",                              {btreeNodes}          },
    {{2},                    "Null tree pointer on btree insert",                        {}                    },
    {{10},                   "ISR ring buffer overflow",                                 {}                    },
    {{11},                   "ISR ring buffer empty on get",                             {}                    },
    {{12},                   "QMIR FO",                                                  {qmirData}            },
    {{13},                   "Unexpected interrupt",                                     {pirData}             },
    {{14},                   "IRQ5 installation failed",                                 {}                    },
    {{15},                   "IRQ6 installation failed",                                 {}                    },
    {{20},                   "Diskline mode illegal at initialization",                  {disklineMode}        },
    {{21, 22, 24, 26, 115},  "Unexpected ISURP opcode",                                  {dumpIsurp}           },
    {{23, 25, 27, 114, 116}, "Unexpected ISURP current state",                           {dumpIsurp}           },
    {{28},                   "Reconfiguration complete on non-reconfiguring volume",     {dumpCacheVt}         },
    {{29, 61},               "Unexpected MMSG request type",                             {dumpMmsg}            },
    {{30, 37},               "Unexpected MMSG request protocol",                         {dumpMmsg}            },
    {{31},                   "Unexpected MSA queue on not empty interrupt",              {qmirData}            },
    {{32},                   "Unexpected MSA queue on low water interrupt",              {qmirData}            },
    {{33},                   "Unexpected MSA queue on high water interrupt",             {qmirData}            },
    {{34},                   "MSA queue overflow",                                       {qmirData}            },
    {{35, 110},              "Error in post Startup semaphore",                          {dumpSemaphore}       },
    {{36},                   "Error in wait on Admin semaphore",                         {dumpSemaphore}       },
    {{38},                   "Illegal ARC Configuration",                                {arcTables}           },
    {{39, 40, 41, 42, 52},   "Received sync packet with unexpected phase",               {structureHead}       },
    {{43},                   "Error in wait on communication semaphore",                 {dumpSemaphore}       },
    {{44, 51},               "Received structure on comm queue with unexpected address", {structureHead}       },
    {{45},                   "comm queue not empty after pop",                           {structureHead}       },
    {{46},                   "timeout on wait for sync",                                 {structureHead}       },
    {{48, 49},               "This cache manager is not volume owner",                   {volumeAndMmsg}       },
    {{162, to, 171},         "This cache manager is not volume owner",                   {volumeAndIsurp}      },
    {{50},                   "Received structure on comm queue when not dual",           {structureHead}       },
    {{53},                   "Slave cache manager not alive",                            {}                    },
    {{60},                   "Forget command received on volume with activity",          {volumeNumber}        },
    {{62, 65},               "start chunkstripe destage not on chunkstripe boundary",    {dumpClhVt}           },
    {{63, 66},               "CLH has activity at start destage",                        {dumpClh}             },
    {{64, 67},               "CLH with dirty bitmap all set on low priority age list",   {dumpClh}             },
    {{68},                   "CLH in chunkstripe destage not all dirty",                 {dumpClh}             },
    {{69},                   "CLH has activity at start sync cache destage",             {dumpClh}             },
    {{70},                   "Error in freeing destage extra ISURP",                     {dumpIsurpListheads}  },
    {{71},                   "Error in allocating destage extra ISURP",                  {dumpIsurpListheads}  },
    {{72},                   "Out of extra ISURPs when attempting to allocate one",      {extraIsurpCount}     },
    {{100},                  "Error in create QMI semaphore",                            {dumpSemaphore}       },
    {{101},                  "Error in create Startup semaphore",                        {dumpSemaphore}       },
    {{102},                  "Error in create Admin semaphore",                          {dumpSemaphore}       },
    {{103},                  "Error in create IO semaphore",                             {dumpSemaphore}       },
    {{104},                  "Error on IO task create",                                  {}                    },
    {{105, 107, 109},        "Error in wait on Startup semaphore",                       {dumpSemaphore}       },
    {{106},                  "Error on admin task create",                               {}                    },
    {{108},                  "Error on fetch task create",                               {}                    },
    {{111},                  "Error in wait on IO semaphore",                            {dumpSemaphore}       },
    {{112},                  "Received unknown structure type",                          {structureHead}       },
    {{113},                  "bad receive MSA queue status on pop",                      {queuePopStatus}      },
    {{117},                  "fast path cache hit, too many CLHs",                       {remainingAndIsurp}   },
    {{118, to, 121},         "CLH not on hash table in host read",                       {currentAndIsurp}     },
    {{122, 124},             "CLH not on hash table in host write",                      {currentAndIsurp}     },
    {{123},                  "null overwrite CLH in host write",                         {dumpIsurpClh}        },
    {{125},                  "CLH not on hash table in data out response",               {currentAndIsurp}     },
    {{126},                  "No activity on CLH in data out response",                  {dumpIsurpClh}        },
    {{127},                  "null overwrite CLH in data out response",                  {dumpIsurpClh}        },
    {{128},                  "CLH not on hash table in raid5 write thru",                {currentAndIsurp}     },
    {{129},                  "null overwrite CLH in raid5 write thru",                   {dumpIsurpClh}        },
    {{130, 131, 132},        "reserved CLHs zero in build diskline fill",                {dumpIsurpClhReconfig}},
    {{133, 135},             "CLH not on hash table in completed task",                  {currentAndIsurp}     },
    {{134, 136},             "No activity on CLH in completed task response",            {dumpIsurpClh}        },
    {{137},                  "null overwrite CLH in completed task response",            {dumpIsurpClh}        },
    {{138},                  "overwrite CLH bitmaps on in completed task response",      {dumpClhOverwrite}    },
    {{139},                  "CLH being freed has free flag already set",                {dumpClhListheads}    },
    {{140},                  "CLH being freed has main listhead not empty",              {dumpClhListheads}    },
    {{141},                  "CLH being freed has age listhead not empty",               {dumpClhListheads}    },
    {{142},                  "CLH being freed has conflict listhead not empty",          {dumpClhListheads}    },
    {{143},                  "CLH being freed has activity",                             {dumpClhListheads}    },
    {{144},                  "CLH being freed has dirty bits set",                       {dumpClhListheads}    },
    {{145},                  "CLH free count went over total count",                     {dumpClhCounts}       },
    {{146},                  "Attempt to allocate CLH with none free",                   {dumpClhCounts}       },
    {{147},                  "CLH being allocated has conflict listhead not empty",      {dumpClhListheads}    },
    {{148},                  "CLH being allocated has age listhead not empty",           {dumpClhListheads}    },
    {{149},                  "CLH being allocated has activity",                         {dumpClhListheads}    },
    {{150},                  "conflict detect, too many CLHs",                           {currentAndIsurp}     },
    {{154},                  "CLH not on hash table in conflict resolution",             {currentAndIsurp}     },
    {{159},                  "CLH not on hash table in finish ops resource request",     {currentAndIsurp}     },
    {{151, 152, 153},        "CLH not on hash table in conflict resolution",             {largestAndIsurp}     },
    {{155},                  "held aside flag set in replace resources",                 {dumpIsurpClh}        },
    {{156},                  "CLH not found in replace resources",                       {dumpIsurpClh}        },
    {{157},                  "ping count zero in ping diskline data",                    {dumpIsurpClh}        },
    {{158},                  "cache index invalid at flush CLH",                         {indexAndClh}         },
    {{160},                  "quiesce received for this",                                {}                    },
    {{161},                  "Error in create commnuication semaphore",                  {dumpSemaphore}       },
};

constexpr bool covers(const Bugcheck& row, std::size_t id) {
  for (std::size_t i = 0; i < std::size(row.ids) && row.ids[i] != 0; ++i) {
    if (row.ids[i] == id) return true;
    if (row.ids[i] == to && row.ids[i - 1] < id && id < row.ids[i + 1]) return true;
  }
  return false;
}

using Slots = std::array<std::uint8_t, lastId + 1>;
constexpr std::uint8_t noRow = 255;

/// For each event id the index of its row. It does not compile if an id is past the last one or
/// stands in two rows.
consteval Slots makeSlots() {
  Slots slots;
  slots.fill(noRow);
  for (std::size_t id = 1; id < to; ++id) {
    for (std::size_t row = 0; row < std::size(bugchecks); ++row) {
      if (!covers(bugchecks[row], id)) continue;
      if (slots.at(id) != noRow) throw "an event id stands in two rows";
      slots[id] = static_cast<std::uint8_t>(row);
    }
  }
  return slots;
}

constexpr Slots slots = makeSlots();

const Bugcheck* find(std::size_t id) {
  return id < slots.size() && slots[id] != noRow ? &bugchecks[slots[id]] : nullptr;
}

}  // namespace

}  // namespace mpuevent::cache

namespace Pegasus {

namespace {

String nameOf(std::uint16_t id) {
  char name[] = "Bugcheck 65535";
  constexpr std::size_t numberAt = sizeof "Bugcheck " - 1;
  const char* end = std::to_chars(name + numberAt, std::end(name), id).ptr;
  return mpuevent::toString({name, end});
}

}  // namespace

CACHE18P_Event::CACHE18P_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  const mpuevent::Record event(record, length);
  setEventID(nameOf(event.id()));
  const mpuevent::cache::Bugcheck* bugcheck = mpuevent::cache::find(event.id());
  if (bugcheck == nullptr) {
    mpuevent::showUndecoded(*this, event, {"CACHE18P_Event", 96}, "Unhandled Event by CACHE18P",
                            mpuevent::NumberBase::decimal);
    return;
  }
  setSummary(mpuevent::toString(bugcheck->summary));
  const auto& [first, second] = bugcheck->elements;
  mpuevent::BodyWriter body(mpuevent::Separator::blank, 64 * (first.size() + second.size()));
  writeFields(body, event.payload(), first);
  writeFields(body, event.payload(), second);
  setBody(body.string());
}

CACHE18P_Event::~CACHE18P_Event() = default;

}  // namespace Pegasus
