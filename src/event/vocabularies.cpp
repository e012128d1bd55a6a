#include <MPUEvent/Quarn_Event.h>

#include <string_view>

#include "event/Tables.h"
#include "event/Text.h"
#include "event/Trace.h"

namespace Pegasus {

namespace {

using mpuevent::CodeText;
using mpuevent::packed;
using mpuevent::textOf;

constexpr CodeText sourceNames[] = {
#define PLAIN(source, word) {source, word},
#define MODULE(source, word, name) {source, word},
#include "modules/Modules.def"
};

constexpr CodeText categoryWords[] = {
    {1,  "System"       },
    {2,  "Management"   },
    {3,  "Environmental"},
    {4,  "Device"       },
    {5,  "Volume"       },
    {6,  "Device"       }, // the same word as 4
    {7,  "SCSI"         },
    {8,  "iSCSI"        },
    {9,  "Network"      },
    {10, "Hardware"     },
    {11, "I/O"          },
    {12, "Cache"        },
    {13, "iSNS"         },
};

}  // namespace

String Quarn_Event::sourceFromEmpValue(unsigned int source) const {
  const std::string_view name = textOf(packed<sourceNames>, source);
  if (!name.empty()) return mpuevent::asciiString(name);
  mpuevent::trace({"Quarn_Event", 173},
                  {"Quarn_Event::sourceFromEmpValue() has no case for source # ", source});
  return mpuevent::decimalString(source);
}

String Quarn_Event::categoryFromEmpValue(unsigned int category) const {
  const std::string_view word = textOf(packed<categoryWords>, category);
  if (!word.empty()) return mpuevent::asciiString(word);
  mpuevent::trace({"Quarn_Event", 300},
                  {"Quarn_Event::categoryFromEmpValue() has no case for category # ", category});
  return mpuevent::decimalString(category);
}

unsigned int Quarn_Event::eventTypeFromEmpValue(unsigned int type) const {
  if (type >= 1 && type <= 3) return type;
  mpuevent::trace({"Quarn_Event", 361},
                  {"Quarn_Event::eventTypeFromEmpValue() has no case for Event Type # ", type});
  return 0;
}

}  // namespace Pegasus
