// Arbitrary bytes as one message: through the envelope and the factory to every accessor.
#include <MPUEvent/MPUEvent.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "EventProperties.h"
#include "FuzzTarget.h"
#include "support/DecodedEvent.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::fuzz::require;
using mpuevent::support::EventFields;
using mpuevent::support::fieldsOf;
using Pegasus::CMAPMessageHeader;
using Pegasus::MPUEvent;

constexpr std::size_t kRecordHeaderSize = 152;
constexpr std::size_t kLongestRecord =
    std::numeric_limits<std::uint16_t>::max() - CMAPMessageHeader::wireSize;

/// The event of a record of `length` bytes; null if they are too few.
std::unique_ptr<Pegasus::Quarn_Event> decode(const MPUEvent& envelope, std::size_t length) {
  std::unique_ptr<Pegasus::Quarn_Event> event(envelope.create_Quarn_Event());
  require((event == nullptr) == (length < kRecordHeaderSize), "null below 152 bytes only");
  return event;
}

/// It may not matter whether trace lines are written.
void decodeTraced(const MPUEvent& envelope, std::size_t length) {
  if (const auto event = decode(envelope, length)) {
    const EventFields fields = fieldsOf(*event);
    require(mpuevent::support::utf8(event->str()).size() > fields.textSize(),
            "str() holds every text");
    const mpuevent::support::TraceCapture tracing;
    require(fields == fieldsOf(*decode(envelope, length)), "tracing changes no event");
  }
}

/// What the total length says decides whether the body can be read.
void readAsSent(const CMAPMessageHeader& header, std::string_view body) {
  const std::size_t wanted =
      static_cast<std::uint16_t>(header.getTotalLength() - CMAPMessageHeader::wireSize);
  Pegasus::Quarn_imemstream stream(body.data(), static_cast<int>(body.size()));
  try {
    const MPUEvent envelope(header, stream);
    require(wanted <= body.size(), "a short body throws");
    if (wanted >= kRecordHeaderSize) {
      mpuevent::fuzz::decodeChecked(body.substr(0, wanted),
                                    [&] { return decode(envelope, wanted); });
    } else {
      decode(envelope, wanted);
    }
    require(envelope.str().size() > 0, "a loaded envelope has a dump");
  } catch (const Pegasus::CMAPOperationFailedException&) {
    require(wanted > body.size(), "a whole body does not throw");
  }
}

MPUEvent wholeMessage(CMAPMessageHeader header, std::string_view body) {
  header.setTotalLength(static_cast<std::uint16_t>(body.size() + CMAPMessageHeader::wireSize));
  Pegasus::Quarn_imemstream stream(body.data(), static_cast<int>(body.size()));
  return MPUEvent(header, stream);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::array<unsigned char, CMAPMessageHeader::wireSize> wire{};
  const std::size_t headerSize = std::min(size, wire.size());
  std::copy(data, data + headerSize, wire.begin());
  const CMAPMessageHeader header(wire.data());
  std::string body(data + headerSize, data + size);

  readAsSent(header, body);
  body.resize(std::min(body.size(), kLongestRecord));
  const MPUEvent whole = wholeMessage(header, body);
  if (mpuevent::fuzz::isThorough(body)) {
    decodeTraced(whole, body.size());
  } else {
    decode(whole, body.size());
  }
  return 0;
}
