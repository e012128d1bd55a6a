#include <MPUEvent/ISCSIMP_Event.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "support/DecodedEvent.h"
#include "support/GoldenRows.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::support::EventFields;
using mpuevent::support::letters;
using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;
using namespace Pegasus;

EventFields decode(const Payload& payload, std::uint16_t id = 3) {
  return mpuevent::support::fieldsOf(
      *mpuevent::support::decode(RecordBuilder().source(22).id(id).payload(payload).str()));
}

TEST(IscsiManagement, NamesTheEventWhateverThePayloadKind) {
  const mpuevent::support::TraceCapture trace;
  for (const std::uint16_t kind : {std::uint16_t{0}, std::uint16_t{7}, std::uint16_t{0x0100}}) {
    SCOPED_TRACE(kind);
    const EventFields event = decode(Payload().u16(kind).u16(1).zeros(90), 65535);
    EXPECT_EQ(event.eventId(), "Unknown (65535)");
    EXPECT_EQ(event.summary(), "");
    EXPECT_EQ(event.body(), "");
  }
  EXPECT_TRUE(trace.lines().empty());
}

/// A payload of this kind, the first bytes all different, with a header that begins like this.
Payload payloadOf(std::uint16_t kind, std::uint16_t header = 0x4387) {
  return letters(56).at(0).u16(kind).at(8).u16(header).padTo(76);
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
  check(&ISCSIMP_Event::build_basic_event, payloadOf(1));
  check(&ISCSIMP_Event::build_socket_event, payloadOf(2).at(2).u16(5));
  check(&ISCSIMP_Event::build_param_event,
        payloadOf(3).at(56).u16(3).u16(0).u16(0).u16(3).u16(0).text("ab").text("cd"));
  check(&ISCSIMP_Event::build_login_event,
        payloadOf(4).at(18).u16(2).at(68).u16(6).u16(12).text("iqn.i").text("iqn.t"));
  check(&ISCSIMP_Event::build_request_event,
        payloadOf(5).at(56).u16(6).u16(6).text("iqn.h").text("iqn.a"));
  check(&ISCSIMP_Event::build_message_event, payloadOf(6));

  XmlString body;
  std::string summary = "replaced";
  event.build_unknown_event(body, summary, as<ICS_EVL>(payloadOf(6)));
  EXPECT_EQ(body.text(), "");
  EXPECT_EQ(summary, "");
}

TEST(IscsiManagementMembers, ShowHeadersAddressesAndCodes) {
  const auto header = [](std::uint16_t start) {
    return Payload().bytes(payloadOf(5, start).str().substr(8));
  };
  const auto shownWith = [](std::uint16_t start) {
    const std::string body = decode(payloadOf(5, start)).body();
    return body.substr(body.find("<Opcode>"));
  };
  ISCSIMP_Event event(nullptr, 0);
  XmlString body;
  event.build_bhs(body, as<ISCSI_BHS>(header(0x4387)));
  event.build_bhs(body, as<ISCSI_BHS>(header(0x3F87)));
  event.build_bhs(body, nullptr);
  EXPECT_EQ(body.text(), shownWith(0x4387));
  XmlString direct;  // the opcode is not looked at
  event.build_text_request_bhs(direct, as<ISCSI_TEXT_REQUEST>(header(0x0040)));
  event.build_login_request_bhs(direct, as<ISCSI_LOGIN_REQUEST>(header(0x4087)));
  EXPECT_EQ(direct.text(), shownWith(0x0440) + shownWith(0x4387));

  EXPECT_EQ(event.get_ip_address(*as<IpAddr_t>(Payload().u32(0xC0A8000A))), "192.168.0.10");
  EXPECT_EQ(event.get_isid(as<unsigned char>(Payload().u16(0x0102).u32(0x03040506))),
            "0x10203040506");
  EXPECT_EQ(event.get_isid(as<unsigned char>(Payload().u16(0).u32(0x1F))), "0x00001f");
  EXPECT_EQ(event.get_isid(nullptr), "");
  EXPECT_EQ(event.build_unknown_string(53), "Unknown (53)");
  EXPECT_EQ(event.build_unknown_string(4294967295), "Unknown (4294967295)");
}

}  // namespace
