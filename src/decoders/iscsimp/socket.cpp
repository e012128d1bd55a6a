// Events of sockets. They show the status code only if it tells of a failure.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "decoders/iscsimp/builders.h"
#include "decoders/iscsimp/elements.h"
#include "decoders/iscsimp/tables.h"
#include "event/Codes.h"
#include "event/Fields.h"

namespace mpuevent::iscsimp {

using enum Width;
using enum Format;

namespace {

constexpr Field targetPort = {"Target_TCP_Port", 8, u16, udec};
constexpr Field initiatorPort = {"Initiator_TCP_Port", 10, u16, udec};
constexpr Field closeReason = {"Close_Reason", 20, u32, udec};
constexpr std::size_t targetAddress = 12;
constexpr std::size_t initiatorAddress = 16;

constexpr std::uint32_t noSocket = 65535;

constexpr std::uint16_t socketClosed = 5;
constexpr std::uint16_t socketOpened = 6;
constexpr std::uint16_t loggedIn = 9;

bool isSuccess(std::uint16_t status) {
  return status == socketClosed || status == socketOpened || status == loggedIn;
}

void writeAddressElement(BodyWriter& body, RecordView data, std::string_view key, std::size_t at) {
  if (!data.holds(at, 4)) return;
  body.openElement(key);
  writeIpAddress(body, data, at);
  body.closeElement(key);
}

void writeEndpoint(BodyWriter& out, RecordView data, std::size_t address, const Field& port) {
  writeIpAddress(out, data, address);
  out.character(':');
  out.decimal(std::uint32_t{data.u16(port.offset)});
}

}  // namespace

void writeBasicEvent(BodyWriter& body, BodyWriter& summary, RecordView data) {
  const bool success = isSuccess(data.u16(2));
  if (!success) writeReason(body, data);
  if (data.u32(4) != noSocket) writeField(body, data, socketNumber);
  if (!success) writeStatus(summary, data);
}

void writeSocketEvent(BodyWriter& body, BodyWriter& summary, RecordView data) {
  const std::uint16_t status = data.u16(2);
  if (!isSuccess(status)) writeReason(body, data);
  writeField(body, data, socketNumber);
  writeField(body, data, targetPort);
  writeAddressElement(body, data, "Target_IP_Address", targetAddress);
  writeField(body, data, initiatorPort);
  writeAddressElement(body, data, "Initiator_IP_Address", initiatorAddress);

  if (!isSuccess(status)) return writeStatus(summary, data);
  if (status == socketClosed) {
    writeCode(body, data, closeReason, packed<close_reasons>, unknownCode);
    writeCodeText(summary, packed<close_reasons>, numberAt(data, closeReason), udec, unknownCode);
  } else {
    summary.words("Target ");
    writeEndpoint(summary, data, targetAddress, targetPort);
    summary.words(", Initiator ");
    writeEndpoint(summary, data, initiatorAddress, initiatorPort);
  }
  writeSocketSuffix(summary, data);
}

}  // namespace mpuevent::iscsimp
