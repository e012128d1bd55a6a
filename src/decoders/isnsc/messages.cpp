#include "decoders/isnsc/messages.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <span>

#include "event/Codes.h"
#include "event/Fields.h"
#include "event/Lists.h"
#include "event/Tables.h"
#include "event/Trace.h"

namespace mpuevent::isnsc {

namespace {

using enum Format;
using enum Width;

enum IcsType : std::uint32_t {
  configurationRequest = 1,
  configurationResponse = 0x800001,
};

constexpr CodeText protocols[] = {
    {0,  "Invalid"        },
    {1,  "RCP"            },
    {2,  "HACC"           },
    {3,  "CMP"            },
    {4,  "VolMgr"         },
    {5,  "DDLM"           },
    {6,  "NetConfig"      },
    {7,  "CMAP"           },
    {8,  "EMP"            },
    {9,  "IOMgr"          },
    {10, "iSCSI"          },
    {11, "iSNSC"          },
    {12, "Startup"        },
    {13, "Shutdown"       },
    {14, "Bugcheck"       },
    {15, "SMIS"           },
    {16, "BatteryMgr"     },
    {17, "FirmwareUpgrade"},
};

constexpr Field messageFields[] = {
    {"mmch_LH",         4,  u64, markedPair},
    {"Message_Type",    12, u8,  dec       },
    {"Message_Version", 13, u8,  dec       },
    {"Message_Length",  14, u16, dec       },
};

// The high byte of the opcode. A protocol without a name is shown by its number.
constexpr Field opcodeProtocol = {"OpCode_Protocol", 16, u8, dec};

constexpr Field opcodeFields[] = {
    {"OpCode_Type",      16, u24, markedHex8 },
    {"Requestor",        20, u8,  dec        },
    {"mmsg_cont",        21, u8,  markedHex2 },
    {"Dest_EP",          22, u8,  markedHex2 },
    {"Recipient_Loc_BM", 24, u64, markedHex16},
    {"Recipient_OB_BM",  32, u64, markedHex16},
    {"Return_Code",      40, u32, dec        },
    {"Handle",           44, u32, markedHex8 },
    {"General_Use_1",    48, u32, markedHex8 },
    {"General_Use_2",    52, u32, markedHex8 },
    {"General_Use_3",    56, u32, markedHex8 },
};

constexpr Field requestFields[] = {
    {"isns_control",               68, u32, markedHex8},
    {"isns_server_ip",             72, u32, markedHex8},
    {"isns_server_subnet_mask",    76, u32, markedHex8},
    {"isns_server_port",           80, u32, markedHex8},
    {"isns_heartbeat_ip",          84, u32, markedHex8},
    {"isns_heartbeat_subnet_mask", 88, u32, markedHex8},
};

constexpr std::size_t sourceNodeId = 92;
constexpr std::size_t longestNodeId = 224;
constexpr std::size_t sourceNodeAlias = sourceNodeId + longestNodeId;
static_assert(endWithin(sourceNodeId, messageFields, opcodeFields, requestFields));

constexpr Field responseFields[] = {
    {"isns_status", 68, u32, markedHex8},
};

constexpr CodeText icsSummaries[] = {
    {configurationRequest,  "Client_Config Request Message" },
    {configurationResponse, "Client_Config Response Message"},
};
constexpr CodeText textSummaries[] = {
    {1, "Invalid Arguments, detail in Message Body"},
    {2, "Display Arguments, detail in Message Body"},
};
constexpr Field argumentCount = {"Arg_Count", 1, u8, dec};
constexpr std::size_t argumentSize = 4;

void writeCommonFields(BodyWriter& body, RecordView message) {
  writeFields(body, message, packed<messageFields>);
  writeCode(body, message, opcodeProtocol, packed<protocols>);
  writeFields(body, message, packed<opcodeFields>);
}

void writeArgument(BodyWriter& body, std::uint32_t index, std::uint32_t value) {
  char key[] = "Arg255";  // as long as a key can get: the count is one byte
  char* digits = key + 3;
  if (index < 10) *digits++ = '0';
  const char* end = std::to_chars(digits, key + sizeof key, index).ptr;
  body.element({key, static_cast<std::size_t>(end - key)}, hexUpper8, value);
}

}  // namespace

void IsnsPayload::writeOrigin(SafeBody& body) const {
  body.recordElement("Module", module());
  if (bytes_.holds(lineAt, 4)) body.literals().element("Line", dec, line());
}

std::string_view icsSummary(const IsnsPayload& payload) {
  const std::string_view summary = textOf(packed<icsSummaries>, payload.message().u24(0));
  return summary.empty() ? "Unknown ICS message" : summary;
}

void traceUnknownType(const IsnsPayload& payload) {
  if (!textOf(packed<icsSummaries>, payload.message().u24(0)).empty()) return;
  const std::uint32_t type = payload.message().u32(0);
  trace({"ISNSC_Event", 342}, {"Unknown ics_type", TracePart(type, NumberBase::ofStream)});
}

void writeIcsMessage(SafeBody& body, const IsnsPayload& payload) {
  const RecordView message = payload.message();
  body.openGroup("ICS_MESSAGE");
  payload.writeOrigin(body);
  switch (message.u24(0)) {
    case configurationRequest:
      writeCommonFields(body.literals(), message);
      writeFields(body.literals(), message, packed<requestFields>);
      body.recordElement("src_node_id", message.text(sourceNodeId, longestNodeId));
      body.recordElement("src_node_alias", message.text(sourceNodeAlias));
      break;
    case configurationResponse:
      writeCommonFields(body.literals(), message);
      writeFields(body.literals(), message, packed<responseFields>);
      break;
  }
  body.closeGroup();
}

std::string_view textSummary(const IsnsPayload& payload) {
  const std::string_view summary = textOf(packed<textSummaries>, payload.message().u16(2));
  return summary.empty() ? "Unknown text_id for TEXT_MSG Event" : summary;
}

void writeTextMessage(SafeBody& body, const IsnsPayload& payload) {
  const RecordView message = payload.message();
  body.openGroup("Arguments");
  payload.writeOrigin(body);
  writeField(body.literals(), message, argumentCount);
  const List arguments = {4, argumentSize, numberAt(message, argumentCount)};
  forEachEntry(message, arguments, [&](RecordView argument, std::uint32_t index) {
    if (!argument.holds(0, argumentSize)) return false;
    writeArgument(body.literals(), index, argument.u32(0));
    return true;
  });
  body.closeGroup();
}

}  // namespace mpuevent::isnsc
