#include <MPUEvent/ISCSIMP_Event.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "decoders/iscsimp/builders.h"
#include "decoders/iscsimp/tables.h"
#include "event/BodyWriter.h"
#include "event/Codes.h"
#include "event/OwnEventId.h"
#include "event/RecordView.h"
#include "event/Text.h"

namespace mpuevent::iscsimp {

namespace {

using Pegasus::String;
using Pegasus::XmlString;

enum PayloadKind : std::uint16_t {
  basicData = 1,
  socketData = 2,
  paramData = 3,
  loginData = 4,
  requestData = 5,
  messageData = 6,
};

/// Null for an unknown kind.
WriteEvent* writerOf(std::uint16_t kind) {
  switch (kind) {
    case basicData:
      return writeBasicEvent;
    case socketData:
      return writeSocketEvent;
    case paramData:
      return writeParamEvent;
    case loginData:
      return writeLoginEvent;
    case requestData:
      return writeRequestEvent;
    case messageData:
      return writeMessageEvent;
    default:
      return nullptr;
  }
}

void writeUnknown(BodyWriter& text, std::uint32_t code) {
  writeCodeText(text, {}, code, Format::udec, unknownCode);
}

String eventName(std::uint16_t id) {
  const std::string_view name = textOf(packed<event_names>, id);
  if (!name.empty()) return asciiString(name);
  LineBuffer unknown(Separator::none);
  writeUnknown(unknown, id);
  return unknown.string();
}

void build(XmlString& body, std::string& summary, const void* data, WriteEvent* write) {
  BodyBuffer elements(Separator::none);
  LineBuffer line(Separator::none);
  if (data != nullptr) write(elements, line, RecordView::unbounded(data));
  elements.tellElements();
  body.append(std::string(elements.view()));
  summary = line.view();
}

void build(XmlString& body, const void* bhs, void (*write)(BodyWriter& body, RecordView bhs)) {
  if (bhs == nullptr) return;
  BodyBuffer elements(Separator::none);
  write(elements, RecordView::unbounded(bhs));
  elements.tellElements();
  body.append(std::string(elements.view()));
}

}  // namespace

}  // namespace mpuevent::iscsimp

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::iscsimp;

ISCSIMP_Event::ISCSIMP_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(withOwnEventId(bytes), static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  const RecordView payload = record.payload();
  WriteEvent* write = writerOf(payload.u16(0));
  BodyBuffer body(Separator::none);
  LineBuffer summary(Separator::none);
  if (write != nullptr) write(body, summary, payload);
  Quarn_Event::setEventID(eventName(record.id()));
  Quarn_Event::setBody(body.string());
  Quarn_Event::setSummary(summary.string());
}

ISCSIMP_Event::~ISCSIMP_Event() = default;

void ISCSIMP_Event::build_basic_event(XmlString& body, std::string& summary, BASIC_DATA* data) {
  build(body, summary, data, writeBasicEvent);
}

void ISCSIMP_Event::build_socket_event(XmlString& body, std::string& summary, SOCKET_DATA* data) {
  build(body, summary, data, writeSocketEvent);
}

void ISCSIMP_Event::build_login_event(XmlString& body, std::string& summary, LOGIN_DATA* data) {
  build(body, summary, data, writeLoginEvent);
}

void ISCSIMP_Event::build_param_event(XmlString& body, std::string& summary, PARAM_DATA* data) {
  build(body, summary, data, writeParamEvent);
}

void ISCSIMP_Event::build_request_event(XmlString& body, std::string& summary, REQUEST_DATA* data) {
  build(body, summary, data, writeRequestEvent);
}

void ISCSIMP_Event::build_message_event(XmlString& body, std::string& summary, MESSAGE_DATA* data) {
  build(body, summary, data, writeMessageEvent);
}

void ISCSIMP_Event::build_unknown_event(XmlString&, std::string& summary, ICS_EVL*) {
  summary.clear();
}

std::string ISCSIMP_Event::build_unknown_string(unsigned int code) {
  LineBuffer text(Separator::none);
  writeUnknown(text, code);
  return std::string(text.view());
}

void ISCSIMP_Event::build_bhs(XmlString& body, ISCSI_BHS* bhs) { build(body, bhs, writeBhs); }

void ISCSIMP_Event::build_login_request_bhs(XmlString& body, ISCSI_LOGIN_REQUEST* bhs) {
  build(body, bhs, writeLoginRequestBhs);
}

void ISCSIMP_Event::build_text_request_bhs(XmlString& body, ISCSI_TEXT_REQUEST* bhs) {
  build(body, bhs, writeTextRequestBhs);
}

std::string ISCSIMP_Event::get_ip_address(IpAddr_t& address) {
  LineBuffer text(Separator::none);
  writeIpAddress(text, RecordView::unbounded(&address), 0);
  return std::string(text.view());
}

std::string ISCSIMP_Event::get_isid(unsigned char* isid) {
  if (isid == nullptr) return {};
  LineBuffer text(Separator::none);
  text.number(Format::hexLower6, RecordView::unbounded(isid).u48(0));
  return std::string(text.view());
}

}  // namespace Pegasus
