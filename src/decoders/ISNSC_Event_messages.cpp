#include "decoders/ISNSC_Event_messages.h"

#include <charconv>
#include <span>

#include "event/Fields.h"
#include "event/Tables.h"
#include "event/Trace.h"

namespace mpuevent {

namespace {

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

// The forms of a value.
void decimal(BodyWriter& body, std::uint64_t value) { body.number(Format::dec, value); }

void hexByte(BodyWriter& body, std::uint64_t value) {
  body.number(Format::bareHex2, value);
  body.text(" (hex)");
}

void hexWord(BodyWriter& body, std::uint64_t value) {
  body.number(Format::bareHex8, value);
  body.text(" (hex)");
}

void hexWords(BodyWriter& body, std::uint64_t value) {
  body.character('(');
  body.number(Format::bareHex8, value >> 32);
  body.text(", ");
  body.number(Format::bareHex8, value & 0xFFFFFFFF);
  body.text(") (hex)");
}

void bitmap(BodyWriter& body, std::uint64_t value) {
  body.hexDigits(value, 16, true);
  body.text(" (hex)");
}

void protocol(BodyWriter& body, std::uint64_t value) {
  const std::string_view name = textAt(protocols, static_cast<std::uint32_t>(value));
  if (name.empty()) return decimal(body, value);
  body.text(name);
}

/// One row of the ICS message's layout; the offset counts from the start of the message.
struct Element {
  std::string_view key;
  std::uint16_t offset;
  Width width;
  void (*write)(BodyWriter& body, std::uint64_t value);
};

constexpr Element commonElements[] = {
    {"mmch_LH",          4,  u64, hexWords},
    {"Message_Type",     12, u8,  decimal },
    {"Message_Version",  13, u8,  decimal },
    {"Message_Length",   14, u16, decimal },
    {"OpCode_Protocol",  16, u8,  protocol},
    {"OpCode_Type",      16, u24, hexWord },
    {"Requestor",        20, u8,  decimal },
    {"mmsg_cont",        21, u8,  hexByte },
    {"Dest_EP",          22, u8,  hexByte },
    {"Recipient_Loc_BM", 24, u64, bitmap  },
    {"Recipient_OB_BM",  32, u64, bitmap  },
    {"Return_Code",      40, u32, decimal },
    {"Handle",           44, u32, hexWord },
    {"General_Use_1",    48, u32, hexWord },
    {"General_Use_2",    52, u32, hexWord },
    {"General_Use_3",    56, u32, hexWord },
};

constexpr Element requestElements[] = {
    {"isns_control",               68, u32, hexWord},
    {"isns_server_ip",             72, u32, hexWord},
    {"isns_server_subnet_mask",    76, u32, hexWord},
    {"isns_server_port",           80, u32, hexWord},
    {"isns_heartbeat_ip",          84, u32, hexWord},
    {"isns_heartbeat_subnet_mask", 88, u32, hexWord},
};

constexpr Element responseElements[] = {
    {"isns_status", 68, u32, hexWord},
};

std::uint64_t numberAt(RecordView bytes, std::size_t at, Width width) {
  switch (width) {
    case u8:
      return bytes.u8(at);
    case u16:
      return bytes.u16(at);
    case u24:
      return bytes.u24(at);
    case u32:
      return bytes.u32(at);
    default:
      return bytes.u64(at);
  }
}

void writeElements(BodyWriter& body, RecordView message, std::span<const Element> elements) {
  for (const Element& element : elements) {
    if (!message.holds(element.offset, byteCount(element.width))) continue;
    body.openElement(element.key);
    element.write(body, numberAt(message, element.offset, element.width));
    body.closeElement(element.key);
  }
}

void writeArgument(BodyWriter& body, unsigned index, std::uint32_t value) {
  char key[] = "Arg255";
  char* digits = key + 3;
  if (index < 10) *digits++ = '0';
  const char* end = std::to_chars(digits, key + sizeof key, index).ptr;
  body.element({key, static_cast<std::size_t>(end - key)}, Format::hex8, value);
}

}  // namespace

void IsnsPayload::writeOrigin(SafeBody& body) const {
  body.recordElement("Module", module());
  if (bytes_.holds(lineAt, 4)) body.element("Line", Format::dec, line());
}

std::string_view icsSummary(const IsnsPayload& payload) {
  switch (payload.message().u24(0)) {
    case configurationRequest:
      return "Client_Config Request Message";
    case configurationResponse:
      return "Client_Config Response Message";
    default:
      trace({"ISNSC_Event", 342}, {"Unknown ics_type", payload.message().u32(0)});
      return "Unknown ICS message";
  }
}

void writeIcsMessage(SafeBody& body, const IsnsPayload& payload) {
  const RecordView message = payload.message();
  body.openGroup("ICS_MESSAGE");
  payload.writeOrigin(body);
  switch (message.u24(0)) {
    case configurationRequest:
      writeElements(body, message, commonElements);
      writeElements(body, message, requestElements);
      body.recordElement("src_node_id", message.text(92, 224));
      body.recordElement("src_node_alias", message.text(316));
      break;
    case configurationResponse:
      writeElements(body, message, commonElements);
      writeElements(body, message, responseElements);
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
  if (message.holds(1, 1)) body.element("Arg_Count", Format::dec, count);
  for (unsigned i = 0; i < count && message.holds(4 + 4 * i, 4); ++i) {
    writeArgument(body, i, message.u32(4 + 4 * i));
  }
  body.closeGroup("Arguments");
}

}  // namespace mpuevent
