#include <cstdint>
#include <span>

#include "decoders/startup/bodies.h"
#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/Tables.h"

namespace mpuevent::startup {

using Pegasus::String;

namespace {

using Texts = std::span<const std::string_view>;

constexpr Field signalFields[] = {
    {"Signal_number", 0, Width::u32, Format::dec      },
    {"Errno",         4, Width::u32, Format::dec      },
    {"Signal_code",   8, Width::u32, Format::hexLower8},
};

// What follows these three depends on the class, the upper half of the signal code.

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

// Events by code, behind the text for a code that has none.

constexpr std::string_view pollEvents[] = {
    "Unknown poll event",
    "Input data available",
    "Output buffers available",
    "Input message available",
    "I/O error",
    "High priority input available",
    "Device disconnected",
};
constexpr std::string_view childEvents[] = {
    "Unknown child event",
    "Child exited",
    "Child was killed",
    "Child terminated abnormally",
    "Traced child has trapped",
    "Child has stopped",
    "Stopped child has continued",
};
// clang-format off
constexpr std::string_view illegalInstructions[] = {
    "Unrecognized error",
    "Illegal opcode",
    "Illegal operand",
    "Illegal addressing mode",
    "Illegal trap",
    "Privileged opcode",
    "Privileged register",
    "Coprocessor error",
    "Internal stack error",
};
// clang-format on
constexpr std::string_view traps[] = {
    "Unrecognized error",
    "Process breakpoint",
    "Process trace trap",
};
constexpr std::string_view busErrors[] = {
    "Unrecognized error",
    "Invalid address alignment",
    "Non-existent physical address",
    "Object specific hardware error",
};
constexpr std::string_view floatingPointErrors[] = {
    "Unrecognized error",
    "Integer divide by zero",
    "Integer overflow",
    "Floating point divide by zero",
    "Floating point overflow",
    "Floating point underflow",
    "Floating point inexact result",
    "Floating point invalid operation",
    "Subscript out of range",
};
constexpr std::string_view segmentationViolations[] = {
    "Unrecognized error",
    "Address not mapped to object",
    "Invalid permissions for mapped object",
};

struct SignalClass {
  std::uint32_t number;
  std::string_view cause;
  Texts events;
  std::span<const Field> fields;
};

constexpr std::uint32_t faultClass = 3;

constexpr SignalClass signalClasses[] = {
    {0, "Killed by another process",        {},          senderFields  },
    {1, "Timer event",                      {},          {}            },
    {2, "Polled event:",                    pollEvents,  pollFields    },
    {4, "Child process signalled an event", childEvents, childFields   },
    {5, "Real time event",                  {},          realTimeFields},
};
static_assert(rising(signalClasses, &SignalClass::number));

struct Fault {
  std::uint32_t signal;
  std::string_view cause;
  Texts events;
};

constexpr Fault faults[] = {
    {4,  "Illegal instruction",      illegalInstructions   },
    {5,  "Trace/breakpoint trap",    traps                 },
    {7,  "Bus error",                busErrors             },
    {8,  "Floating point exception", floatingPointErrors   },
    {11, "Segmentation violation",   segmentationViolations},
};
static_assert(rising(faults, &Fault::signal));

constexpr std::size_t generalRegisters = 128;
constexpr unsigned generalRegisterCount = 32;

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

constexpr std::size_t processName = 324;
constexpr Field processId[] = {
    {"PID", 320, Width::u32, Format::dec},
};
constexpr Field processLayout[] = {
    {"_start",       304, Width::u32, Format::pointer},
    {"_end",         308, Width::u32, Format::pointer},
    {"__bss_start",  312, Width::u32, Format::pointer},
    {"__data_start", 316, Width::u32, Format::pointer},
};

void writeFault(BodyWriter& body, RecordView info, std::uint32_t code) {
  const Fault* fault = findRow(faults, &Fault::signal, info.u32(0));
  if (fault == nullptr) {
    body.element("__Cause", "Unrecognized processor fault");
  } else {
    body.openElement("__Cause");
    body.text(fault->cause);
    body.text(" (code: ");
    body.decimal(code);
    body.character(')');
    body.closeElement("__Cause");
    body.element("__Event", fault->events[code]);
  }
  writeFields(body, info, faultFields);
}

void writeCause(BodyWriter& body, RecordView info) {
  const std::uint32_t signalCode = info.u32(8);
  // The code is whether there is one, not the word's lower half.
  const std::uint32_t code = signalCode != 0 ? 1 : 0;
  const std::uint32_t number = signalCode >> 16;
  if (number == faultClass) return writeFault(body, info, code);
  const SignalClass* signalClass = findRow(signalClasses, &SignalClass::number, number);
  if (signalClass == nullptr) return body.element("__Cause", "Unrecognized event");
  body.element("__Cause", signalClass->cause);
  if (!signalClass->events.empty()) body.element("__Event", signalClass->events[code]);
  writeFields(body, info, signalClass->fields);
}

void writeGeneralRegisters(BodyWriter& body, RecordView info) {
  for (unsigned i = 0; i < generalRegisterCount; ++i) {
    const std::size_t at = generalRegisters + std::size_t{4} * i;
    if (!info.holds(at, 4)) return;
    body.openElement("GPR");
    body.decimal(i);
    body.text(": ");
    body.number(Format::hexLower8, info.u32(at));
    body.closeElement("GPR");
  }
}

}  // namespace

String signalBody(const Record& record) {
  const RecordView info = record.payload();
  BodyWriter body(Separator::blank, 2048);
  body.element("Exception", "Caught");

  body.openGroup("Signal_info");
  writeFields(body, info, signalFields);
  if (info.holds(8, 4)) writeCause(body, info);
  body.closeGroup("Signal_info");

  body.openGroup("Registers");
  writeGeneralRegisters(body, info);
  writeFields(body, info, specialRegisters);
  body.closeGroup("Registers");

  body.openGroup("Process_Info");
  writeFields(body, info, processId);
  body.element("Name", info.text(processName));
  writeFields(body, info, processLayout);
  body.closeGroup("Process_Info");
  return body.string();
}

}  // namespace mpuevent::startup
