#include <MPUEvent/CACHE18P_Event.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "decoders/cache/layouts.h"
#include "event/OwnEventId.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace mpuevent::cache {

namespace {

using Pegasus::String;

struct EventRow {
  struct Packed {
    TextBefore summary;
    std::uint16_t id;
    Shown shown;
  };
  constexpr Packed packed(auto place) const { return {place(summary), id, shown}; }

  std::uint16_t id;
  std::string_view summary;
  Shown shown;
};

using enum Shown;

constexpr EventRow events[] = {
    {1,   "Ran out of free btree nodes",                              btreeNodes          },
    {2,   "Null tree pointer on btree insert",                        nothing             },
    {3,   "Ran out of free btree nodes",                              btreeNodes          },
    {4,   "Ran out of free btree nodes",                              btreeNodes          },
    {10,  "ISR ring buffer overflow",                                 nothing             },
    {11,  "ISR ring buffer empty on get",                             nothing             },
    {12,  "QMIR FO",                                                  qmirData            },
    {13,  "Unexpected interrupt",                                     pirData             },
    {14,  "IRQ5 installation failed",                                 nothing             },
    {15,  "IRQ6 installation failed",                                 nothing             },
    {20,  "Diskline mode illegal at initialization",                  disklineMode        },
    {21,  "Unexpected ISURP opcode",                                  dumpIsurp           },
    {22,  "Unexpected ISURP opcode",                                  dumpIsurp           },
    {23,  "Unexpected ISURP current state",                           dumpIsurp           },
    {24,  "Unexpected ISURP opcode",                                  dumpIsurp           },
    {25,  "Unexpected ISURP current state",                           dumpIsurp           },
    {26,  "Unexpected ISURP opcode",                                  dumpIsurp           },
    {27,  "Unexpected ISURP current state",                           dumpIsurp           },
    {28,  "Reconfiguration complete on non-reconfiguring volume",     dumpCacheVt         },
    {29,  "Unexpected MMSG request type",                             dumpMmsg            },
    {30,  "Unexpected MMSG request protocol",                         dumpMmsg            },
    {31,  "Unexpected MSA queue on not empty interrupt",              qmirData            },
    {32,  "Unexpected MSA queue on low water interrupt",              qmirData            },
    {33,  "Unexpected MSA queue on high water interrupt",             qmirData            },
    {34,  "MSA queue overflow",                                       qmirData            },
    {35,  "Error in post Startup semaphore",                          dumpSemaphore       },
    {36,  "Error in wait on Admin semaphore",                         dumpSemaphore       },
    {37,  "Unexpected MMSG request protocol",                         dumpMmsg            },
    {38,  "Illegal ARC Configuration",                                arcTables           },
    {39,  "Received sync packet with unexpected phase",               structureHead       },
    {40,  "Received sync packet with unexpected phase",               structureHead       },
    {41,  "Received sync packet with unexpected phase",               structureHead       },
    {42,  "Received sync packet with unexpected phase",               structureHead       },
    {43,  "Error in wait on communication semaphore",                 dumpSemaphore       },
    {44,  "Received structure on comm queue with unexpected address", structureHead       },
    {45,  "comm queue not empty after pop",                           structureHead       },
    {46,  "timeout on wait for sync",                                 structureHead       },
    {48,  "This cache manager is not volume owner",                   volumeAndMmsg       },
    {49,  "This cache manager is not volume owner",                   volumeAndMmsg       },
    {50,  "Received structure on comm queue when not dual",           structureHead       },
    {51,  "Received structure on comm queue with unexpected address", structureHead       },
    {52,  "Received sync packet with unexpected phase",               structureHead       },
    {53,  "Slave cache manager not alive",                            nothing             },
    {60,  "Forget command received on volume with activity",          volumeNumber        },
    {61,  "Unexpected MMSG request type",                             dumpMmsg            },
    {62,  "start chunkstripe destage not on chunkstripe boundary",    dumpClhVt           },
    {63,  "CLH has activity at start destage",                        dumpClh             },
    {64,  "CLH with dirty bitmap all set on low priority age list",   dumpClh             },
    {65,  "start chunkstripe destage not on chunkstripe boundary",    dumpClhVt           },
    {66,  "CLH has activity at start destage",                        dumpClh             },
    {67,  "CLH with dirty bitmap all set on low priority age list",   dumpClh             },
    {68,  "CLH in chunkstripe destage not all dirty",                 dumpClh             },
    {69,  "CLH has activity at start sync cache destage",             dumpClh             },
    {70,  "Error in freeing destage extra ISURP",                     dumpIsurpListheads  },
    {71,  "Error in allocating destage extra ISURP",                  dumpIsurpListheads  },
    {72,  "Out of extra ISURPs when attempting to allocate one",      extraIsurpCount     },
    {100, "Error in create QMI semaphore",                            dumpSemaphore       },
    {101, "Error in create Startup semaphore",                        dumpSemaphore       },
    {102, "Error in create Admin semaphore",                          dumpSemaphore       },
    {103, "Error in create IO semaphore",                             dumpSemaphore       },
    {104, "Error on IO task create",                                  nothing             },
    {105, "Error in wait on Startup semaphore",                       dumpSemaphore       },
    {106, "Error on admin task create",                               nothing             },
    {107, "Error in wait on Startup semaphore",                       dumpSemaphore       },
    {108, "Error on fetch task create",                               nothing             },
    {109, "Error in wait on Startup semaphore",                       dumpSemaphore       },
    {110, "Error in post Startup semaphore",                          dumpSemaphore       },
    {111, "Error in wait on IO semaphore",                            dumpSemaphore       },
    {112, "Received unknown structure type",                          structureHead       },
    {113, "bad receive MSA queue status on pop",                      queuePopStatus      },
    {114, "Unexpected ISURP current state",                           dumpIsurp           },
    {115, "Unexpected ISURP opcode",                                  dumpIsurp           },
    {116, "Unexpected ISURP current state",                           dumpIsurp           },
    {117, "fast path cache hit, too many CLHs",                       remainingAndIsurp   },
    {118, "CLH not on hash table in host read",                       currentAndIsurp     },
    {119, "CLH not on hash table in host read",                       currentAndIsurp     },
    {120, "CLH not on hash table in host read",                       currentAndIsurp     },
    {121, "CLH not on hash table in host read",                       currentAndIsurp     },
    {122, "CLH not on hash table in host write",                      currentAndIsurp     },
    {123, "null overwrite CLH in host write",                         dumpIsurpClh        },
    {124, "CLH not on hash table in host write",                      currentAndIsurp     },
    {125, "CLH not on hash table in data out response",               currentAndIsurp     },
    {126, "No activity on CLH in data out response",                  dumpIsurpClh        },
    {127, "null overwrite CLH in data out response",                  dumpIsurpClh        },
    {128, "CLH not on hash table in raid5 write thru",                currentAndIsurp     },
    {129, "null overwrite CLH in raid5 write thru",                   dumpIsurpClh        },
    {130, "reserved CLHs zero in build diskline fill",                dumpIsurpClhReconfig},
    {131, "reserved CLHs zero in build diskline fill",                dumpIsurpClhReconfig},
    {132, "reserved CLHs zero in build diskline fill",                dumpIsurpClhReconfig},
    {133, "CLH not on hash table in completed task",                  currentAndIsurp     },
    {134, "No activity on CLH in completed task response",            dumpIsurpClh        },
    {135, "CLH not on hash table in completed task",                  currentAndIsurp     },
    {136, "No activity on CLH in completed task response",            dumpIsurpClh        },
    {137, "null overwrite CLH in completed task response",            dumpIsurpClh        },
    {138, "overwrite CLH bitmaps on in completed task response",      dumpClhOverwrite    },
    {139, "CLH being freed has free flag already set",                dumpClhListheads    },
    {140, "CLH being freed has main listhead not empty",              dumpClhListheads    },
    {141, "CLH being freed has age listhead not empty",               dumpClhListheads    },
    {142, "CLH being freed has conflict listhead not empty",          dumpClhListheads    },
    {143, "CLH being freed has activity",                             dumpClhListheads    },
    {144, "CLH being freed has dirty bits set",                       dumpClhListheads    },
    {145, "CLH free count went over total count",                     dumpClhCounts       },
    {146, "Attempt to allocate CLH with none free",                   dumpClhCounts       },
    {147, "CLH being allocated has conflict listhead not empty",      dumpClhListheads    },
    {148, "CLH being allocated has age listhead not empty",           dumpClhListheads    },
    {149, "CLH being allocated has activity",                         dumpClhListheads    },
    {150, "conflict detect, too many CLHs",                           currentAndIsurp     },
    {151, "CLH not on hash table in conflict resolution",             largestAndIsurp     },
    {152, "CLH not on hash table in conflict resolution",             largestAndIsurp     },
    {153, "CLH not on hash table in conflict resolution",             largestAndIsurp     },
    {154, "CLH not on hash table in conflict resolution",             currentAndIsurp     },
    {155, "held aside flag set in replace resources",                 dumpIsurpClh        },
    {156, "CLH not found in replace resources",                       dumpIsurpClh        },
    {157, "ping count zero in ping diskline data",                    dumpIsurpClh        },
    {158, "cache index invalid at flush CLH",                         indexAndClh         },
    {159, "CLH not on hash table in finish ops resource request",     currentAndIsurp     },
    {160, "quiesce received for this",                                nothing             },
    {161, "Error in create commnuication semaphore",                  dumpSemaphore       },
    {162, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {163, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {164, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {165, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {166, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {167, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {168, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {169, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {170, "This cache manager is not volume owner",                   volumeAndIsurp      },
    {171, "This cache manager is not volume owner",                   volumeAndIsurp      },
};
static_assert(rising(events, &EventRow::id));

String nameOf(std::uint16_t id) {
  char name[] = "Bugcheck 65535";
  constexpr std::size_t numberAt = sizeof "Bugcheck " - 1;
  const char* end = std::to_chars(name + numberAt, std::end(name), id).ptr;
  return asciiString({name, end});
}

}  // namespace

}  // namespace mpuevent::cache

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::cache;

CACHE18P_Event::CACHE18P_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(withOwnEventId(bytes), static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  setEventID(nameOf(record.id()));
  const EventRow::Packed* bugcheck = findRow(packed<events>, &EventRow::Packed::id, record.id());
  if (bugcheck == nullptr) {
    showUndecoded(*this, record, {"CACHE18P_Event", 96}, "Unhandled Event by CACHE18P",
                  NumberBase::decimal);
    return;
  }
  setSummary(asciiString(bugcheck->summary.view()));
  const auto& [first, second] = elementsOf(bugcheck->shown);
  BodyBuffer body;
  writeFields(body, record.payload(), first);
  writeFields(body, record.payload(), second);
  setBody(body.string());
}

CACHE18P_Event::~CACHE18P_Event() = default;

}  // namespace Pegasus
