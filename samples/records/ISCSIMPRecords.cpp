// Sockets that come and go, logins and what goes wrong with them, as hosts and an array with two
// portals see it.
#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

enum EventId : std::uint16_t {
  openSocketRequest = 1,
  closeSocket = 2,
  login = 3,
  openSocketFailure = 4,
  closeSocketFailure = 5,
  loginFailure = 6,
  textRequestFailure = 7,
  internalError = 8,
  loginError = 9,
};

constexpr std::string_view webHost = "iqn.2005-03.example.hosts:web-1";
constexpr std::string_view mailHost = "iqn.2005-03.example.hosts:mail-2.corp";
constexpr std::string_view mailVolume = "iqn.2004-11.example.array:tank-17.mail-store.volume-0042";

constexpr std::uint32_t portalAddress = 0x0A140328;  // 10.20.3.40

std::uint16_t stored(std::string_view text) { return static_cast<std::uint16_t>(text.size() + 1); }

Payload basicData(std::uint16_t status, std::uint32_t socket) {
  return Payload().u16(1).u16(status).u32(socket);
}

Payload socketData(std::uint16_t status, std::uint32_t socket, std::uint16_t initiatorPort,
                   std::uint32_t initiatorAddress, std::uint32_t closeReason) {
  return Payload()
      .u16(2)
      .u16(status)
      .u32(socket)
      .u16(3260)
      .u16(initiatorPort)
      .u32(portalAddress)
      .u32(initiatorAddress)
      .u32(closeReason);
}

struct Session {
  std::uint16_t type = 2;
  std::uint8_t initialR2T = 0;
  std::uint8_t immediateData = 1;
  std::uint8_t authentication = 1;
  std::uint16_t digest = 1;
  std::uint16_t markInterval = 0;
};

Payload loginData(const Session& session, std::string_view initiator, std::string_view target) {
  const bool discovery = target.empty();
  Payload data;
  data.u16(4).u16(9).u32(discovery ? 19 : 23).u32(discovery ? 258 : 259);
  data.u16(0x0002).u32(0x3D0A0001).u16(session.type).u32(262144).u32(65536);
  data.u16(2).u16(20).u32(1).u16(4).u16(0);
  data.u8(session.initialR2T).u8(session.immediateData).u8(1).u8(1);
  data.u16(1).u8(0).u8(session.authentication).u32(131072).u32(262144);
  data.u16(session.digest).u16(1).u16(session.markInterval).u16(session.markInterval);
  data.u16(3).u16(discovery ? 0 : 12).u16(discovery ? 0 : stored(initiator)).u16(!discovery);
  data.text(initiator);
  return discovery ? data : data.text(target);
}

Payload loginRequest() {
  return Payload()
      .u8(0x43)
      .u8(0x87)  // transit from operational negotiation to full feature phase
      .u8(0)
      .u8(0)
      .u32(0x000001C4)
      .u16(0x0002)
      .u32(0x3D0A0001)
      .u16(0)
      .u32(0x0000000A)
      .u16(1)
      .zeros(2)
      .u32(1041)
      .u32(77201)
      .padTo(48);
}

Payload textRequest() {
  return Payload()
      .u8(4)
      .u8(0xC0)  // final, and yet to be continued
      .zeros(2)
      .u32(0x00000011)
      .zeros(8)
      .u32(0x0000002F)
      .u32(0xFFFFFFFF)
      .u32(1055)
      .u32(77219)
      .padTo(48);
}

Payload paramData(std::uint16_t status, std::string_view initiator, std::string_view target,
                  std::string_view parameter, std::string_view first, std::string_view second) {
  Payload data;
  Payload texts;
  data.u16(3).u16(status).u32(23).bytes(loginRequest().str());
  for (const std::string_view text : {initiator, target, parameter, first, second}) {
    data.u16(text.empty() ? 0 : stored(text));
    if (!text.empty()) texts.text(text);
  }
  return data.bytes(texts.str());
}

Payload requestData(std::uint16_t status, const Payload& header, std::string_view initiator,
                    std::string_view target) {
  Payload data;
  data.u16(5).u16(status).u32(31).bytes(header.str());
  data.u16(stored(initiator)).u16(target.empty() ? 0 : stored(target)).text(initiator);
  return target.empty() ? data : data.text(target);
}

Payload messageData(std::uint16_t status, std::uint8_t protocol, std::uint32_t type,
                    std::uint32_t returnCode, std::uint32_t handle) {
  return Payload()
      .u16(6)
      .u16(status)
      .at(14)
      .u16(96)
      .u8(protocol)
      .u24(type)
      .u8(22)
      .u8(0x80)
      .u8(31)
      .at(40)
      .u32(returnCode)
      .u32(handle);
}

}  // namespace

std::vector<Sample> samplesOfISCSIMP() {
  constexpr std::uint32_t webAddress = 0x0A140365;   // 10.20.3.101
  constexpr std::uint32_t mailAddress = 0x0A1403C9;  // 10.20.3.201
  const Session normal;
  const Session discovery{.type = 1};
  const Session mutualChap{.initialR2T = 1, .immediateData = 0, .authentication = 3};
  const Session chap{
      .initialR2T = 1, .immediateData = 1, .authentication = 2, .digest = 2, .markInterval = 2048};
  const Session untold{.type = 7, .authentication = 9};
  return {
      Sample(openSocketRequest, 1, informational, iscsiEvents,
             socketData(6, 23, 51022, webAddress, 0)),
      Sample(openSocketFailure, 1, warning, iscsiEvents, socketData(4, 23, 51022, webAddress, 0)),
      Sample(openSocketFailure, 1, error, iscsiEvents, basicData(8, 65535)),
      Sample(login, 1, informational, iscsiEvents, socketData(9, 31, 49713, mailAddress, 0)),
      Sample(login, 1, informational, iscsiEvents, loginData(discovery, webHost, "")),
      Sample(login, 1, informational, iscsiEvents, loginData(normal, webHost, mailVolume)),
      Sample(login, 1, informational, iscsiEvents, loginData(mutualChap, mailHost, mailVolume)),
      Sample(login, 1, informational, iscsiEvents, loginData(chap, mailHost, mailVolume)),
      Sample(login, 1, warning, iscsiEvents, loginData(untold, webHost, mailVolume)),
      Sample(loginError, 1, warning, iscsiEvents,
             paramData(19, webHost, mailVolume, "InitialR2T", "No", "Maybe")),
      Sample(loginError, 1, error, iscsiEvents,
             paramData(46, "", "", "MaxRecvDataSegmentLength", "65537", "")),
      Sample(loginError, 1, warning, iscsiEvents,
             paramData(10, mailHost, "", "TargetName", "", "")),
      Sample(loginFailure, 1, error, iscsiEvents,
             requestData(33, loginRequest(), mailHost, mailVolume)),
      Sample(loginFailure, 1, error, iscsiEvents, requestData(31, loginRequest(), webHost, "")),
      Sample(textRequestFailure, 1, error, iscsiEvents,
             requestData(41, textRequest(), webHost, "")),
      Sample(internalError, 1, error, iscsiEvents,
             messageData(44, 22, 0x000107, 0x80000012, 0x00A1B2C3)),
      Sample(closeSocketFailure, 1, warning, iscsiEvents, basicData(1, 40)),
      Sample(closeSocket, 1, informational, iscsiEvents, socketData(5, 31, 49713, mailAddress, 11)),
      Sample(closeSocket, 1, warning, iscsiEvents, socketData(5, 23, 51022, webAddress, 27)),
      Sample(12, 2, warning, iscsiEvents, Payload().u16(7).u16(61).u32(0x00010203)),
  };
}

}  // namespace mpuevent::samples
