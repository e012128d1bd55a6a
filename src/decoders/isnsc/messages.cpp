#include "decoders/isnsc/messages.h"

#include <charconv>

#include "event/Fields.h"
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

enum TextId : std::uint16_t {
  invalidArguments = 1,
  displayArguments = 2,
};

// By the opcode protocol byte.
constexpr std::string_view protocols[] = {
    "Invalid",          // 0
    "RCP",              // 1
    "HACC",             // 2
    "CMP",              // 3
    "VolMgr",           // 4
    "DDLM",             // 5
    "NetConfig",        // 6
    "CMAP",             // 7
    "EMP",              // 8
    "IOMgr",            // 9
    "iSCSI",            // 10
    "iSNSC",            // 11
    "Startup",          // 12
    "Shutdown",         // 13
    "Bugcheck",         // 14
    "SMIS",             // 15
    "BatteryMgr",       // 16
    "FirmwareUpgrade",  // 17
};

constexpr Field messageFields[] = {
    {"mmch_LH",         4,  u64, markedPair},
    {"Message_Type",    12, u8,  dec       },
    {"Message_Version", 13, u8,  dec       },
    {"Message_Length",  14, u16, dec       },
};

// Between these and those above stands the opcode's protocol.
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

constexpr Field responseFields[] = {
    {"isns_status", 68, u32, markedHex8},
};

void writeProtocol(BodyWriter& body, RecordView message) {
  constexpr std::string_view key = "OpCode_Protocol";
  constexpr std::size_t at = 16;
  if (!message.holds(at, 1)) return;
  const std::string_view name = textAt(protocols, message.u8(at));
  if (name.empty()) return body.element(key, dec, message.u8(at));
  body.element(key, name);
}

void writeCommonFields(BodyWriter& body, RecordView message) {
  writeFields(body, message, messageFields);
  writeProtocol(body, message);
  writeFields(body, message, opcodeFields);
}

void writeArgument(BodyWriter& body, unsigned index, std::uint32_t value) {
  char key[] = "Arg255";
  char* digits = key + 3;
  if (index < 10) *digits++ = '0';
  const char* end = std::to_chars(digits, key + sizeof key, index).ptr;
  body.element({key, static_cast<std::size_t>(end - key)}, hexUpper8, value);
}

}  // namespace

void IsnsPayload::writeOrigin(SafeBody& body) const {
  body.recordElement("Module", module());
  if (bytes_.holds(lineAt, 4)) body.element("Line", dec, line());
}

std::string_view icsSummary(const IsnsPayload& payload) {
  switch (payload.message().u24(0)) {
    case configurationRequest:
      return "Client_Config Request Message";
    case configurationResponse:
      return "Client_Config Response Message";
    default:
      trace(
          {
              "ISNSC_Event", 342
      },
          {"Unknown ics_type", {payload.message().u32(0), NumberBase::ofStream}});
      return "Unknown ICS message";
  }
}

void writeIcsMessage(SafeBody& body, const IsnsPayload& payload) {
  const RecordView message = payload.message();
  body.openGroup("ICS_MESSAGE");
  payload.writeOrigin(body);
  switch (message.u24(0)) {
    case configurationRequest:
      writeCommonFields(body, message);
      writeFields(body, message, requestFields);
      body.recordElement("src_node_id", message.text(92, 224));
      body.recordElement("src_node_alias", message.text(316));
      break;
    case configurationResponse:
      writeCommonFields(body, message);
      writeFields(body, message, responseFields);
      break;
  }
  body.closeGroup("ICS_MESSAGE");
}

std::string_view textSummary(const IsnsPayload& payload) {
  switch (payload.message().u16(2)) {
    case invalidArguments:
      return "Invalid Arguments, detail in Message Body";
    case displayArguments:
      return "Display Arguments, detail in Message Body";
    default:
      return "Unknown text_id for TEXT_MSG Event";
  }
}

void writeTextMessage(SafeBody& body, const IsnsPayload& payload) {
  const RecordView message = payload.message();
  body.openGroup("Arguments");
  payload.writeOrigin(body);
  const unsigned count = message.u8(1);
  if (message.holds(1, 1)) body.element("Arg_Count", dec, count);
  for (unsigned i = 0; i < count && message.holds(4 + 4 * i, 4); ++i) {
    writeArgument(body, i, message.u32(4 + 4 * i));
  }
  body.closeGroup("Arguments");
}

}  // namespace mpuevent::isnsc
