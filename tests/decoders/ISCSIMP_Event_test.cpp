#include <MPUEvent/ISCSIMP_Event.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::support::EventFields;
using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;
using namespace Pegasus;

constexpr std::size_t everything = std::string::npos;

/// The event of a payload, of which only the first bytes may be held.
EventFields decode(const Payload& payload, std::size_t held = everything, std::uint16_t id = 3) {
  return mpuevent::support::fieldsOf(*mpuevent::support::decode(
      RecordBuilder().source(22).id(id).payload(payload.str().substr(0, held)).str()));
}

bool has(const EventFields& event, std::string_view part) {
  return event.body().find(part) != std::string::npos;
}

TEST(IscsiManagement, NamesTheEventWhateverThePayloadKind) {
  const mpuevent::support::TraceCapture trace;
  for (const std::uint16_t kind : {std::uint16_t{0}, std::uint16_t{7}, std::uint16_t{0x0100}}) {
    const EventFields event = decode(Payload().u16(kind).u16(1).zeros(90), everything, 65535);
    EXPECT_EQ(event.eventId(), "Unknown (65535)");
    EXPECT_EQ(event.summary(), "");
    EXPECT_EQ(event.body(), "");
  }
  EXPECT_TRUE(trace.lines().empty());
}

TEST(IscsiManagement, ShowsBasicEvents) {
  const auto check = [](std::uint16_t status, std::uint32_t socket, std::string_view summary,
                        std::string_view body) {
    const EventFields event = decode(Payload().u16(1).u16(status).u32(socket));
    EXPECT_EQ(event.summary(), summary);
    EXPECT_EQ(event.body(), body);
  };
  check(0, 0x01020304, "Radiation leak detected",
        "<Reason>Radiation leak detected</Reason><Socket>16909060</Socket>");
  check(47, 65534, "Unknown (47)", "<Reason>Unknown (47)</Reason><Socket>65534</Socket>");
  check(65535, 0, "Unknown (65535)", "<Reason>Unknown (65535)</Reason><Socket>0</Socket>");
  check(5, 0xFFFFFFFF, "", "<Socket>4294967295</Socket>");
  check(6, 7, "", "<Socket>7</Socket>");
  check(9, 65535, "", "");
}

Payload socketData(std::uint16_t status, std::uint32_t closeReason) {
  Payload data;
  data.u16(2).u16(status).u32(65535).u16(3260).u16(51022);
  return data.u32(0xC0A8000A).u32(0x00FF0109).u32(closeReason);
}

TEST(IscsiManagement, ShowsWhyASocketWasClosed) {
  const auto check = [](std::uint32_t closeReason, const std::string& word) {
    const EventFields event = decode(socketData(5, closeReason));
    EXPECT_EQ(event.summary(), word + ", Socket 65535");
    EXPECT_EQ(event.body(),
              "<Socket>65535</Socket><Target_TCP_Port>3260</Target_TCP_Port>"
              "<Target_IP_Address>192.168.0.10</Target_IP_Address>"
              "<Initiator_TCP_Port>51022</Initiator_TCP_Port>"
              "<Initiator_IP_Address>0.255.1.9</Initiator_IP_Address>"
              "<Close_Reason>" +
                  word + "</Close_Reason>");
  };
  check(0, "Unknown");
  check(15, "Unknown (15)");
  EXPECT_EQ(decode(socketData(6, 11)).summary(),
            "Target 192.168.0.10:3260, Initiator 0.255.1.9:51022, Socket 65535");
  EXPECT_EQ(decode(socketData(36, 11)).summary(), "Out of resource");
}

/// A login of a normal session with both names; the target's does not follow the initiator's.
Payload loginData() {
  Payload data;
  data.u16(4).u16(31).u32(0x00010203);  // the status counts for nothing
  data.u32(0x01000C0D).u16(0x8001).u32(0x02030405).u16(2);
  data.u32(262144).u32(65536).u16(2).u16(20).u32(0x00010007).u16(258).u16(3);
  data.u8(0).u8(1).u8(0).u8(0x80).u16(0x1F2E).u8(4).u8(3).u32(131072).u32(8192);
  data.u16(2).u16(1).u16(2048).u16(0).u16(513).u16(1027).u16(12).u16(0x0100);
  return data.text("iqn.host<&").u8('x').text("iqn.array");
}

TEST(IscsiManagement, ShowsOfALoginWhatItsFieldsAskFor) {
  struct Case {
    std::size_t offset;
    std::string_view bytes;  ///< over those of the login above
    std::string_view shown;
    std::string_view missing;
  };
  using namespace std::string_view_literals;
  const Case cases[] = {
      {18, "\0\0"sv,         "<SessionType>Invalid</SessionType>",                   "BurstLength"         },
      {18, "\0\1"sv,         "<SessionType>Discovery</SessionType>",                 "BurstLength"         },
      {18, "\0\1"sv,         "</DefaultTime2Retain><CID>",                           "InOrder"             },
      {18, "\0\3"sv,         "<SessionType>Unknown (3)</SessionType>",               "MaxConnections"      },
      {40, "\1\0"sv,         "</DefaultTime2Retain><MaxBurstLength>",                "FirstBurstLength"    },
      {40, "\0\0"sv,         "<FirstBurstLength >65536<",                            "<ImmediateData>Yes"  },
      {47, "\0"sv,           "<AuthenticationMethod>None<",                          "MutualAuthentication"},
      {47, "\4"sv,           "<AuthenticationMethod>Unknown (4)<",                   "MutualAuthentication"},
      {56, "\0\3\0\2"sv,     "<HeaderDigest>None</HeaderDigest><DataDigest>CRC32C<", ">CRC32C</Header"     },
      {60, "\0\0\1\2"sv,     "<IfMarker>Yes</IfMarker><IfMarkInt>258<",              "OfMarkInt"           },
      {60, "\0\0\0\0"sv,     "<OfMarker>No</OfMarker><IfMarker>No<",                 "MarkInt"             },
      {70, "\0\0"sv,         "<Initiator_ID>513</Initiator_ID><SessionType>",        "Target_ID"           },
      {12, "\0\0\0\0\1\2"sv, "<ISID>0x000102</ISID>",                                "<ISID>0x0000000"     },
      {68, "\xFF\xFF"sv,     "<TargetName></TargetName><Target_ID>1027<",            "TargetName>iqn"      },
  };
  for (const Case& c : cases) {
    const EventFields event = decode(loginData().at(c.offset).bytes(c.bytes));
    EXPECT_TRUE(has(event, c.shown)) << c.shown;
    EXPECT_FALSE(has(event, c.missing)) << c.missing;
  }
  EXPECT_EQ(decode(loginData().at(70).u16(0)).summary(),
            "Normal, TSIH 16780301, Initiator ID 513, Socket 66051");
  EXPECT_EQ(decode(loginData().at(18).u16(300).at(8).u32(0)).summary(),
            "Unknown (300), TSIH 0, Target ID 1027, Initiator ID 513, Socket 66051");
}

Payload header(std::uint8_t first, std::uint8_t second) {
  Payload data;
  data.u8(first).u8(second).u8(5).u8(6).u32(0xFF000010).u16(0x0002).u32(0x3D0A00B1).u16(0x0C0D);
  data.u32(0x0A0B0C0E).u16(0x0203).u16(0x0405).u32(4000000000).u32(0x01020304);
  return data.padTo(48);
}

constexpr std::string_view loginHeaderText =
    "<Opcode>Login Request</Opcode>"
    "<Immediate>Yes</Immediate><Transit>Yes</Transit><Continue>No</Continue>"
    "<CSG>LoginOperationalNegotiation</CSG><NSG>FullFeaturePhase</NSG>"
    "<Version-max>5</Version-max><Version-min>6</Version-min><TotalAHSLength>255</TotalAHSLength>"
    "<DataSegmentLength>16</DataSegmentLength><ISID>0x23d0a00b1</ISID><TSIH>0x0c0d</TSIH>"
    "<ITT>0x0a0b0c0e</ITT><CID>0x0203</CID><CmdSN>4000000000</CmdSN>"
    "<ExpStatSN>16909060</ExpStatSN>";

constexpr std::string_view textHeaderText =
    "<Opcode>Text Request</Opcode>"
    "<Immediate>No</Immediate><Final>No</Final><Continue>Yes</Continue>"
    "<TotalAHSLength>255</TotalAHSLength><DataSegmentLength>16</DataSegmentLength>"
    "<ITT>0x0a0b0c0e</ITT><TTT>0x02030405</TTT><CmdSN>4000000000</CmdSN>"
    "<ExpStatSN>16909060</ExpStatSN>";

Payload requestData(const Payload& bhs, std::uint16_t initiatorLength, std::uint16_t targetLength) {
  Payload data;
  data.u16(5).u16(33).u32(0x01020304).bytes(bhs.str());
  return data.u16(initiatorLength).u16(targetLength);
}

TEST(IscsiManagement, ShowsRequestsWithTheirHeader) {
  const std::string begin =
      "<Reason>Initiator does not have access to target</Reason><Socket>16909060</Socket>";
  const std::string names = "<InitiatorName>iqn.h</InitiatorName><TargetName>iqn.a</TargetName>";
  const EventFields both =
      decode(requestData(header(0x43, 0x87), 6, 4).text("iqn.h").text("iqn.a"));
  EXPECT_EQ(both.summary(), "Initiator does not have access to target");
  EXPECT_EQ(both.body(), begin + names + std::string(loginHeaderText));
  EXPECT_EQ(decode(requestData(header(0x04, 0x40), 0, 4).text("iqn.a")).body(),
            begin + "<TargetName>iqn.a</TargetName>" + std::string(textHeaderText));
  for (const char opcode : {'\x3F', '\x00', '\x01', '\x02', '\x05', '\x11', '\x23'}) {
    EXPECT_EQ(decode(requestData(header(0, 0x87), 0, 0).at(8).bytes({&opcode, 1})).body(), begin);
  }
}

TEST(IscsiManagement, ShowsTheBitsOfAHeader) {
  const auto check = [](std::uint8_t first, std::uint8_t second, std::string_view text) {
    EXPECT_TRUE(has(decode(requestData(header(first, second), 0, 0)), text)) << text;
  };
  check(0x03, 0x40, "<Immediate>No</Immediate><Transit>No</Transit><Continue>Yes</Continue><CSG>");
  check(0x03, 0x3D, "<CSG>FullFeaturePhase</CSG><NSG>LoginOperationalNegotiation</NSG>");
  check(0x03, 0x32, "<CSG>SecurityNegotiation</CSG><NSG>Invalid (2)</NSG>");
  check(0xC4, 0x80, "<Immediate>Yes</Immediate><Final>Yes</Final><Continue>No</Continue><Total");
}

TEST(IscsiManagement, StepsThroughTheTextsOfAParameter) {
  const auto check = [](std::string_view lengths, std::string_view texts, const std::string& names,
                        const std::string& parameter) {
    Payload data;
    data.u16(3).u16(9).u32(5).bytes(header(0x43, 0x87).str()).bytes(lengths).bytes(texts);
    const EventFields event = decode(data);
    EXPECT_EQ(event.summary(), "Login");  // a success code is shown here
    EXPECT_EQ(event.body(), "<Reason>Login</Reason><Socket>5</Socket>" + names +
                                std::string(loginHeaderText) + parameter);
  };
  using namespace std::string_view_literals;
  check("\0\0\0\0\0\5\0\4\0\0"sv, "Key1\0abc"sv, "",
        "<Parameter>Key1</Parameter><Value>abc</Value>");
  check("\0\2\0\3\0\4\0\5\0\6"sv, "a\0b+\0c++\0d+++\0e"sv,
        "<InitiatorName>a</InitiatorName><TargetName>b+</TargetName>",
        "<Parameter>c++</Parameter><Value_Offered>d+++</Value_Offered>"
        "<Value_Answered>e</Value_Answered>");
  // A text ends with its NUL and not where the next begins; no first value, no second.
  check("\0\2\0\0\0\1\0\0\0\7"sv, "abcd\0e"sv, "<InitiatorName>abcd</InitiatorName>",
        "<Parameter>cd</Parameter>");
  check("\0\0\0\7\0\0\0\2\1\0"sv, "Target\0No"sv, "<TargetName>Target</TargetName>",
        "<Value_Offered>No</Value_Offered><Value_Answered></Value_Answered>");
  check("\0\0\0\0\0\0\0\0\0\0"sv, "unused"sv, "", "");
}

Payload messageData() {
  Payload data;
  data.u16(6).u16(44).at(14).u16(0x0102).u8(0xA3).u24(0x040506).u8(0x07).u8(0x08).u8(0xB9);
  return data.at(40).u32(0x0C0D0E0F).u32(0x10203040);
}

/// Bytes as a caller of the members holds them.
template <class Layout>
Layout* as(const Payload& payload) {
  return reinterpret_cast<Layout*>(const_cast<char*>(payload.str().data()));
}

TEST(IscsiManagementMembers, BuildWhatTheEventOfThePayloadShows) {
  ISCSIMP_Event event(nullptr, 0);
  const auto check = [&event]<class Layout>(
                         void (ISCSIMP_Event::*build)(XmlString&, std::string&, Layout*),
                         const Payload& payload) {
    XmlString body;
    body.append("<before>");
    std::string summary = "replaced";
    (event.*build)(body, summary, as<Layout>(payload));
    const EventFields whole = decode(payload);
    EXPECT_NE(whole.body(), "");
    EXPECT_EQ(body.text(), "<before>" + whole.body());
    EXPECT_EQ(summary, whole.summary());
    (event.*build)(body, summary, nullptr);
    EXPECT_EQ(body.text(), "<before>" + whole.body());
    EXPECT_EQ(summary, "");
  };
  check(&ISCSIMP_Event::build_basic_event, Payload().u16(1).u16(8).u32(77));
  check(&ISCSIMP_Event::build_socket_event, socketData(5, 3));
  check(&ISCSIMP_Event::build_param_event,
        Payload().u16(3).u16(10).zeros(56).u16(3).u16(0).u16(0).text("ab").text("cd"));
  check(&ISCSIMP_Event::build_login_event, loginData());
  check(&ISCSIMP_Event::build_request_event,
        requestData(header(4, 0x80), 6, 6).text("iqn.h").text("iqn.a"));
  check(&ISCSIMP_Event::build_message_event, messageData());

  XmlString body;
  std::string summary = "replaced";
  event.build_unknown_event(body, summary, as<ICS_EVL>(messageData()));
  EXPECT_EQ(body.text(), "");
  EXPECT_EQ(summary, "");
}

TEST(IscsiManagementMembers, ShowHeadersAddressesAndCodes) {
  ISCSIMP_Event event(nullptr, 0);
  XmlString body;
  event.build_bhs(body, as<ISCSI_BHS>(header(0x43, 0x87)));
  event.build_bhs(body, as<ISCSI_BHS>(header(0x3F, 0x87)));
  event.build_bhs(body, nullptr);
  EXPECT_EQ(body.text(), loginHeaderText);
  XmlString direct;  // the opcode is not looked at
  event.build_text_request_bhs(direct, as<ISCSI_TEXT_REQUEST>(header(0, 0x40)));
  event.build_login_request_bhs(direct, as<ISCSI_LOGIN_REQUEST>(header(0x40, 0x87)));
  EXPECT_EQ(direct.text(), std::string(textHeaderText) + std::string(loginHeaderText));

  EXPECT_EQ(event.get_ip_address(*as<IpAddr_t>(Payload().u32(0xC0A8000A))), "192.168.0.10");
  EXPECT_EQ(event.get_isid(as<unsigned char>(Payload().u16(0x0102).u32(0x03040506))),
            "0x10203040506");
  EXPECT_EQ(event.get_isid(as<unsigned char>(Payload().u16(0).u32(0x1F))), "0x00001f");
  EXPECT_EQ(event.get_isid(nullptr), "");
  EXPECT_EQ(event.build_unknown_string(53), "Unknown (53)");
  EXPECT_EQ(event.build_unknown_string(4294967295), "Unknown (4294967295)");
}

}  // namespace
