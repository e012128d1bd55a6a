// Parameters and requests that were refused, and internal messages that failed.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "decoders/iscsimp/builders.h"
#include "decoders/iscsimp/elements.h"
#include "event/Fields.h"

namespace mpuevent::iscsimp {

using enum Width;
using enum Format;

namespace {

constexpr std::size_t paramSize = 66;
constexpr std::size_t requestSize = 60;
constexpr std::size_t messageSize = 48;
constexpr std::size_t headerSegment = 8;

void writeHeaderSegment(BodyWriter& body, RecordView data) {
  writeBhs(body, data.from(headerSegment, headerSegmentSize));
}

constexpr Field messageFields[] = {
    {"Protocol",    16, u8,  hexLower4},
    {"Type",        16, u24, hexLower4},
    {"Requestor",   20, u8,  hexLower2},
    {"Destination", 22, u8,  hexLower2},
    {"Length",      14, u16, hexLower4},
    {"Control",     21, u8,  hexLower2},
    {"Handle",      44, u32, hexLower8},
    {"Return_code", 40, u32, hexLower8},
};

static_assert(endWithin(messageSize, messageFields));

/// Steps through the texts that stand behind a layout. A text is there if its stored length is not
/// 0. The length only says where the next text begins: the text itself ends with its NUL.
class TextCursor {
 public:
  TextCursor(BodyWriter& body, RecordView data, std::size_t firstText)
      : body_(body), data_(data), at_(firstText) {}

  /// Writes the text that stands next and steps over it; does neither if the length is 0.
  void write(std::string_view key, std::uint16_t length) {
    if (length == 0) return;
    body_.element(key, data_.text(at_));
    at_ += length;
  }

 private:
  BodyWriter& body_;
  RecordView data_;
  std::size_t at_;
};

}  // namespace

void writeParamEvent(BodyWriter& body, BodyWriter& summary, RecordView data) {
  const std::uint16_t initiatorLength = data.u16(56);
  const std::uint16_t targetLength = data.u16(58);
  const std::uint16_t parameterLength = data.u16(60);
  const std::uint16_t firstValueLength = data.u16(62);
  const std::uint16_t secondValueLength = data.u16(64);
  TextCursor texts(body, data, paramSize);

  writeReason(body, data);
  writeField(body, data, socketNumber);
  texts.write("InitiatorName", initiatorLength);
  texts.write("TargetName", targetLength);
  writeHeaderSegment(body, data);
  texts.write("Parameter", parameterLength);
  if (firstValueLength != 0 && secondValueLength != 0) {
    texts.write("Value_Offered", firstValueLength);
    texts.write("Value_Answered", secondValueLength);
  } else {
    texts.write("Value", firstValueLength);
  }
  writeStatus(summary, data);
}

void writeRequestEvent(BodyWriter& body, BodyWriter& summary, RecordView data) {
  TextCursor texts(body, data, requestSize);

  writeReason(body, data);
  writeField(body, data, socketNumber);
  texts.write("InitiatorName", data.u16(56));
  texts.write("TargetName", data.u16(58));
  writeHeaderSegment(body, data);
  writeStatus(summary, data);
}

void writeMessageEvent(BodyWriter& body, BodyWriter& summary, RecordView data) {
  writeReason(body, data);
  writeFields(body, data, packed<messageFields>);
  writeStatus(summary, data);
}

}  // namespace mpuevent::iscsimp
