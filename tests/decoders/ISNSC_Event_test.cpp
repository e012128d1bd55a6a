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

Payload icsPayload(std::uint32_t type) { return payload(1).u32(type).at(40).u8(0x0B).padTo(96); }

std::string requestPayload(std::string_view nodeId, std::string_view alias) {
  return icsPayload(1).zeros(20).field(nodeId, 224).text(alias).str();
}

void expectTexts(const std::string& payload, const std::string& nodeId, const std::string& alias) {
  const std::string body = decode(payload)[2];
  EXPECT_TRUE(body.ends_with("<src_node_id>" + nodeId + "</src_node_id> <src_node_alias>" + alias +
                             "</src_node_alias> </ICS_MESSAGE>"))
      << body;
}

TEST(IsnsClient, EndsTextsAtTheirNulFieldOrRecordAndEscapesThem) {
  const std::string longId(224, 'n');
  expectTexts(requestPayload(longId, "next"), longId, "next");
  std::string unended = requestPayload("a=b", "50% <x>");
  unended.pop_back();
  expectTexts(unended, "a: b", "50\\% \\<x\\>");
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
    const std::string alias(size - decode(requestPayload("", ""))[2].size(), '%');
    EXPECT_EQ(decode(requestPayload("", alias))[2].size(), size + alias.size());
    // Two a record: none of an unknown type.
    ASSERT_EQ(trace.lines().size(), 4) << trace.lines()[1];
    const std::string traced = size == 16383 ? "size = 16383, setE" : "size = 16384, setE";
    EXPECT_NE(trace.lines().back().find(traced), std::string::npos) << trace.lines().back();
  }
}

}  // namespace
