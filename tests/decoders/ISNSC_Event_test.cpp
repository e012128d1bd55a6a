#include <MPUEvent/ISNSC_Event.h>
#include <gtest/gtest.h>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::support::Payload;
using mpuevent::support::Texts;
using mpuevent::support::TraceCapture;

Texts decode(const std::string& payload) {
  return mpuevent::support::textsOf(*mpuevent::support::decode(
      mpuevent::support::RecordBuilder().source(31).payload(payload).str()));
}
Texts decode(const Payload& payload) { return decode(payload.str()); }

Payload payload(std::uint32_t category, std::uint32_t event = 3, std::uint32_t reason = 2) {
  return Payload().u32(category).u32(event).u32(reason).field("isnsc", 8).u32(0x01020304);
}

Payload icsPayload(std::uint32_t type) {
  Payload bytes = payload(1);
  bytes.u32(type).u64(0x0A0B0C0DF1F2F3F4).u8(0x81).u8(0x12).u16(0xFEDC).u32(0x0B81A2C3);
  bytes.u8(200).u8(0xA9).u8(0x0C).u8(0xEE).u64(0x0123456789ABCDEF).u64(0x00F1E2D3C4B5A697);
  bytes.u32(0xFFFFFFEA).u32(0x11121314).u32(0x21222324).u32(0x31323334).u32(0x0000BEEF);
  return bytes.u64(0xEEEEEEEEDDDDDDDD).u32(0x8000A001);
}

const std::string commonBody =
    "<ICS_MESSAGE><Module>isnsc</Module> <Line>16909060</Line> "
    "<mmch_LH>(0A0B0C0D, F1F2F3F4) (hex)</mmch_LH> <Message_Type>129</Message_Type> "
    "<Message_Version>18</Message_Version> <Message_Length>65244</Message_Length> "
    "<OpCode_Protocol>iSNSC</OpCode_Protocol> <OpCode_Type>0081A2C3 (hex)</OpCode_Type> "
    "<Requestor>200</Requestor> <mmsg_cont>A9 (hex)</mmsg_cont> <Dest_EP>0C (hex)</Dest_EP> "
    "<Recipient_Loc_BM>0123456789ABCDEF (hex)</Recipient_Loc_BM> "
    "<Recipient_OB_BM>00F1E2D3C4B5A697 (hex)</Recipient_OB_BM> <Return_Code>-22</Return_Code> "
    "<Handle>11121314 (hex)</Handle> <General_Use_1>21222324 (hex)</General_Use_1> "
    "<General_Use_2>31323334 (hex)</General_Use_2> <General_Use_3>0000BEEF (hex)</General_Use_3> ";

std::string requestPayload(std::string_view nodeId, std::string_view alias) {
  Payload bytes = icsPayload(0x55000001);  // the high byte does not count
  bytes.u32(0x0A140332).u32(0xFFFFFF00).u32(0x00000C85).u32(0x0A140329).u32(0xFFFE0000);
  return bytes.field(nodeId, 224).text(alias).str();
}

std::string requestBody(const std::string& nodeId, const std::string& alias) {
  return commonBody +
         "<isns_control>8000A001 (hex)</isns_control> "
         "<isns_server_ip>0A140332 (hex)</isns_server_ip> "
         "<isns_server_subnet_mask>FFFFFF00 (hex)</isns_server_subnet_mask> "
         "<isns_server_port>00000C85 (hex)</isns_server_port> "
         "<isns_heartbeat_ip>0A140329 (hex)</isns_heartbeat_ip> "
         "<isns_heartbeat_subnet_mask>FFFE0000 (hex)</isns_heartbeat_subnet_mask> <src_node_id>" +
         nodeId + "</src_node_id> <src_node_alias>" + alias + "</src_node_alias> </ICS_MESSAGE>";
}

TEST(IsnsClient, NamesEventAndReasonAndKnowsNoOtherCategory) {
  const std::tuple<std::uint32_t, std::uint32_t, std::string> cases[] = {
      {1, 3,          "ICS REQ Sent"                               },
      {7, 1,          "TEXT Information"                           },
      {9, 2,          "Unknown event: 9Rcvd"                       },
      {6, 4,          "ISNS MSG Unknown reason: 4"                 },
      {0, 0,          "Unknown event: 0Unknown reason: 0"          },
      {8, 0x80000000, "Unknown event: 8Unknown reason: -2147483648"},
  };
  for (const auto& [event, reason, eventId] : cases) {
    EXPECT_EQ(decode(payload(2, event, reason).u32(1)),
              (Texts{eventId, "Unhandled Event by ISNS Client", ""}));
  }
}

TEST(IsnsClient, ShowsConfigurationMessages) {
  EXPECT_EQ(decode(requestPayload("iqn.a:b", "array (7)")),
            (Texts{"ICS MSG Rcvd", "Client_Config Request Message",
                   requestBody("iqn.a:b", "array (7)")}));
  EXPECT_EQ(decode(icsPayload(0xAA800001).zeros(300)),
            (Texts{"ICS MSG Rcvd", "Client_Config Response Message",
                   commonBody + "<isns_status>8000A001 (hex)</isns_status> </ICS_MESSAGE>"}));
}

TEST(IsnsClient, EndsTextsAtTheirNulFieldOrRecordAndEscapesThem) {
  const std::string longId(224, 'n');
  EXPECT_EQ(decode(requestPayload(longId, "next"))[2], requestBody(longId, "next"));
  std::string unended = requestPayload("a=b", "50% <x>");
  unended.pop_back();
  EXPECT_EQ(decode(unended)[2], requestBody("a: b", "50\\% \\<x\\>"));
  EXPECT_EQ(decode(icsPayload(7).at(12).bytes("longname"))[2],
            "<ICS_MESSAGE><Module>longname</Module> <Line>16909060</Line> </ICS_MESSAGE>");
}

TEST(IsnsClient, ListsArguments) {
  Payload bytes = payload(3).u8(0x99).u8(1).u16(1).u32(0xFFFFFFFE);
  const std::string origin = "<Arguments><Module>isnsc</Module> <Line>16909060</Line> ";
  const std::string first = "<Arg00>0xFFFFFFFE</Arg00> ";
  EXPECT_EQ(decode(bytes), (Texts{"ICS MSG Rcvd", "Invalid Arguments, detail in Message Body",
                                  origin + "<Arg_Count>1</Arg_Count> " + first + "</Arguments>"}));
  // The list ends where the record ends.
  EXPECT_EQ(decode(bytes.at(25).u8(255).u16(2).at(32).u24(0x010203)),
            (Texts{"ICS MSG Rcvd", "Display Arguments, detail in Message Body",
                   origin + "<Arg_Count>255</Arg_Count> " + first + "</Arguments>"}));
  EXPECT_EQ(decode(bytes.at(25).u8(0).u16(0x0201)),
            (Texts{"ICS MSG Rcvd", "Unknown text_id for TEXT_MSG Event",
                   origin + "<Arg_Count>0</Arg_Count> </Arguments>"}));

  bytes.at(25).u8(255).at(28);
  for (std::uint32_t i = 0; i < 256; ++i) bytes.u32(0x1000 + i);
  const std::string body = decode(bytes)[2];
  for (const char* part : {"<Arg09>0x00001009</Arg09> <Arg10>0x0000100A</Arg10> ",
                           "<Arg99>0x00001063</Arg99> <Arg100>0x00001064</Arg100> ",
                           "<Arg254>0x000010FE</Arg254> </Arguments>"}) {
    EXPECT_NE(body.find(part), std::string::npos) << part;
  }
}

TEST(IsnsClient, LeavesOutWhatIsNotHeld) {
  const std::string whole = icsPayload(0x800001).str();
  EXPECT_EQ(decode(whole.substr(0, 12))[2], "<ICS_MESSAGE><Module></Module> </ICS_MESSAGE>");
  EXPECT_EQ(decode(whole.substr(0, 23))[2], "<ICS_MESSAGE><Module>isnsc</Module> </ICS_MESSAGE>");
  // The protocol is the first byte of a word of which the fourth is not held.
  const std::string cut = decode(whole.substr(0, 24 + 19))[2];
  EXPECT_NE(cut.find("<OpCode_Protocol>iSNSC</OpCode_Protocol> </ICS_MESSAGE>"), std::string::npos);
}

TEST(IsnsClient, TracesWhatItReadsAndTheSizesOfTheTexts) {
  const TraceCapture trace;
  decode(payload(1, 0xFFFFFFFF, 1).at(20).u32(0x80000000).u32(0x55000002));
  const std::vector<std::string> lines = trace.lines();
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0],
            "ISNSC_Event:411               :----: ISNS Client Event: 4294967295, Reason: 1, "
            "Category: 1, raw_event_log_data size = 28, Module ID is isnsc, "
            "Line Number = 2147483648");
  EXPECT_EQ(lines[1].substr(lines[1].find(":----")), ":----: Unknown ics_type1426063362");
  EXPECT_EQ(lines[2],
            "ISNSC_Event:501               :----: setEventID, setBody, setSummary: begin, "
            "event_id_buf actual data size = 28, summary_buffer actual data size = 19, "
            "body_buffer_array actual data size = 75, setEventID, setBody, setSummary: end");
}

TEST(IsnsClient, MeasuresTheBodyBeforeEscapingUpToALimit) {
  for (const std::size_t size : {16383U, 20000U}) {
    const TraceCapture trace;
    const std::string alias(size - requestBody("", "").size(), '%');
    EXPECT_EQ(decode(requestPayload("", alias))[2].size(), size + alias.size());
    const std::string traced = size == 16383 ? "size = 16383, setE" : "size = 16384, setE";
    EXPECT_NE(trace.lines().back().find(traced), std::string::npos) << trace.lines().back();
  }
}

}  // namespace
