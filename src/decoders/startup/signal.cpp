#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "decoders/startup/bodies.h"
#include "event/BodyWriter.h"
#include "event/Codes.h"
#include "event/Fields.h"
#include "event/Lists.h"
#include "event/Tables.h"
#include "event/Tags.h"

namespace mpuevent::startup {

using Pegasus::String;

namespace {

constexpr Field signalFields[] = {
    {"Signal_number", 0, Width::u32, Format::dec      },
    {"Errno",         4, Width::u32, Format::dec      },
    {"Signal_code",   8, Width::u32, Format::hexLower8},
};

// What follows these three depends on the class of the signal, which is the upper half of the
// signal code.

constexpr Field senderFields[] = {
    {"__Signal_sent_by", 12, Width::u32, Format::dec},
    {"__Sending_user",   16, Width::u32, Format::dec},
};
constexpr Field pollFields[] = {
    {"__Band",            12, Width::u32, Format::dec},
    {"__File_descriptor", 16, Width::u32, Format::dec},
};
constexpr Field faultFields[] = {
    {"__Address", 12, Width::u32, Format::pointer0x},
};
constexpr Field childFields[] = {
    {"__Exit_value",  20, Width::u32, Format::dec    },
    {"__User_time",   24, Width::u32, Format::seconds},
    {"__System_time", 28, Width::u32, Format::seconds},
};
constexpr Field realTimeFields[] = {
    {"__Signal_value_int", 20, Width::u32, Format::dec    },
    {"__Signal_value_ptr", 20, Width::u32, Format::pointer},
};

// What happened, by code. The code is always 1 where one is looked up (see `writeCause`), so the
// texts of the other codes can never be shown; the tables are required whole all the same.

constexpr CodeText pollEvents[] = {
    {1, "Input data available"         },
    {2, "Output buffers available"     },
    {3, "Input message available"      },
    {4, "I/O error"                    },
    {5, "High priority input available"},
    {6, "Device disconnected"          },
};
constexpr CodeText childEvents[] = {
    {1, "Child exited"               },
    {2, "Child was killed"           },
    {3, "Child terminated abnormally"},
    {4, "Traced child has trapped"   },
    {5, "Child has stopped"          },
    {6, "Stopped child has continued"},
};
constexpr CodeText illegalInstructions[] = {
    {1, "Illegal opcode"         },
    {2, "Illegal operand"        },
    {3, "Illegal addressing mode"},
    {4, "Illegal trap"           },
    {5, "Privileged opcode"      },
    {6, "Privileged register"    },
    {7, "Coprocessor error"      },
    {8, "Internal stack error"   },
};
constexpr CodeText traps[] = {
    {1, "Process breakpoint"},
    {2, "Process trace trap"},
};
constexpr CodeText busErrors[] = {
    {1, "Invalid address alignment"     },
    {2, "Non-existent physical address" },
    {3, "Object specific hardware error"},
};
constexpr CodeText floatingPointErrors[] = {
    {1, "Integer divide by zero"          },
    {2, "Integer overflow"                },
    {3, "Floating point divide by zero"   },
    {4, "Floating point overflow"         },
    {5, "Floating point underflow"        },
    {6, "Floating point inexact result"   },
    {7, "Floating point invalid operation"},
    {8, "Subscript out of range"          },
};
constexpr CodeText segmentationViolations[] = {
    {1, "Address not mapped to object"         },
    {2, "Invalid permissions for mapped object"},
};

struct SignalClass {
  struct Packed {
    TextBefore cause;
    TextBefore unknownEvent;
    std::uint16_t number;
    CodeTable events;
    Fields fields;
  };
  constexpr Packed packed(auto place) const {
    return {place(cause), place(unknownEvent), number, events, fields};
  }

  std::uint16_t number;
  std::string_view cause;
  CodeTable events;
  std::string_view unknownEvent;  ///< empty if the class has no events
  Fields fields;
};

constexpr std::uint16_t faultClass = 3;

constexpr SignalClass signalClasses[] = {
    {0, "Killed by another process",        {},                  "",                    packed<senderFields>  },
    {1, "Timer event",                      {},                  "",                    {}                    },
    {2, "Polled event:",                    packed<pollEvents>,  "Unknown poll event",  packed<pollFields>    },
    {4, "Child process signalled an event", packed<childEvents>, "Unknown child event",
     packed<childFields>                                                                                      },
    {5, "Real time event",                  {},                  "",                    packed<realTimeFields>},
};
static_assert(rising(signalClasses, &SignalClass::number));

struct Fault {
  struct Packed {
    TextBefore cause;
    std::uint16_t signal;
    CodeTable events;
  };
  constexpr Packed packed(auto place) const { return {place(cause), signal, events}; }

  std::uint16_t signal;
  std::string_view cause;
  CodeTable events;
};

constexpr Fault faults[] = {
    {4,  "Illegal instruction",      packed<illegalInstructions>   },
    {5,  "Trace/breakpoint trap",    packed<traps>                 },
    {7,  "Bus error",                packed<busErrors>             },
    {8,  "Floating point exception", packed<floatingPointErrors>   },
    {11, "Segmentation violation",   packed<segmentationViolations>},
};
static_assert(rising(faults, &Fault::signal));

constexpr std::size_t registerSize = 4;
constexpr List generalRegisters = {128, registerSize, 32};

constexpr Field specialRegisters[] = {
    {"NIP",       256, Width::u32, Format::hexLower8},
    {"MSR",       260, Width::u32, Format::hexLower8},
    {"Orig_GPR3", 264, Width::u32, Format::hexLower8},
    {"CTR",       268, Width::u32, Format::hexLower8},
    {"LINK",      272, Width::u32, Format::hexLower8},
    {"XER",       276, Width::u32, Format::hexLower8},
    {"CCR",       280, Width::u32, Format::hexLower8},
    {"MQ",        284, Width::u32, Format::hexLower8},
    {"TRAP",      288, Width::u32, Format::hexLower8},
    {"DAR",       292, Width::u32, Format::hexLower8},
    {"DSISR",     296, Width::u32, Format::hexLower8},
    {"RESULT",    300, Width::u32, Format::hexLower8},
};

constexpr std::size_t processName = 324;  // a text, which reaches to its NUL
constexpr Field processId[] = {
    {"PID", 320, Width::u32, Format::dec},
};
constexpr Field processLayout[] = {
    {"_start",       304, Width::u32, Format::pointer},
    {"_end",         308, Width::u32, Format::pointer},
    {"__bss_start",  312, Width::u32, Format::pointer},
    {"__data_start", 316, Width::u32, Format::pointer},
};

static_assert(endWithin(generalRegisters.start, signalFields, senderFields, pollFields, faultFields,
                        childFields, realTimeFields));
static_assert(endWithin(processName, specialRegisters, processId, processLayout));

void writeEvent(BodyWriter& body, CodeTable events, std::uint32_t code, std::string_view unknown) {
  body.openElement("__Event");
  writeCodeText(body, events, code, Format::dec, toWord(unknown));
  body.closeElement("__Event");
}

/// A fault has its cause and event by the number of the signal.
void writeFault(BodyWriter& body, RecordView info, std::uint32_t code) {
  const Fault::Packed* fault = findRow(packed<faults>, &Fault::Packed::signal, info.u32(0));
  if (fault == nullptr) {
    body.element("__Cause", "Unrecognized processor fault");
  } else {
    body.openElement("__Cause");
    body.words(fault->cause.view());
    body.words(" (code: ");
    body.decimal(code);
    body.character(')');
    body.closeElement("__Cause");
    writeEvent(body, fault->events, code, "Unrecognized error");
  }
  writeFields(body, info, packed<faultFields>);
}

/// Writes why the signal came. A record that was cut inside the signal code says nothing of it.
void writeCause(BodyWriter& body, RecordView info) {
  const std::uint32_t signalCode = info.u32(8);
  // The lower half of the word would be the code, but the output wants to know no more than whether
  // there is a signal code at all.
  const std::uint32_t code = signalCode != 0 ? 1 : 0;
  const std::uint32_t number = signalCode >> 16;
  if (number == faultClass) return writeFault(body, info, code);
  const SignalClass::Packed* signalClass =
      findRow(packed<signalClasses>, &SignalClass::Packed::number, number);
  if (signalClass == nullptr) return body.element("__Cause", "Unrecognized event");
  body.element("__Cause", signalClass->cause.view());
  const std::string_view unknownEvent = signalClass->unknownEvent.view();
  if (!unknownEvent.empty()) writeEvent(body, signalClass->events, code, unknownEvent);
  writeFields(body, info, signalClass->fields);
}

void writeGeneralRegisters(BodyWriter& body, RecordView info) {
  constexpr KeyTags tags{"GPR"};
  ElementRun elements(body);
  forEachWholeEntry(info, generalRegisters, [&](std::size_t at, std::uint32_t number) {
    char* place = elements.open(tags, 2 * longestNumber);
    place = putLiteral(putDecimal(place, number), ": ");
    elements.close(tags, putNumber(place, Format::hexLower8, info.u32(at)));
  });
}

}  // namespace

String signalBody(const Record& record) {
  const RecordView info = record.payload();
  BodyBuffer body;
  body.element("Exception", "Caught");

  body.openGroup("Signal_info");
  writeFields(body, info, packed<signalFields>);
  if (info.holds(8, 4)) writeCause(body, info);
  body.closeGroup("Signal_info");

  body.openGroup("Registers");
  writeGeneralRegisters(body, info);
  writeFields(body, info, packed<specialRegisters>);
  body.closeGroup("Registers");

  body.openGroup("Process_Info");
  writeFields(body, info, packed<processId>);
  body.element("Name", info.text(processName));
  writeFields(body, info, packed<processLayout>);
  body.closeGroup("Process_Info");
  return body.string();
}

}  // namespace mpuevent::startup
