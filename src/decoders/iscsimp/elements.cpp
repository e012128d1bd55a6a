#include "decoders/iscsimp/elements.h"

#include "decoders/iscsimp/tables.h"

namespace mpuevent::iscsimp {

namespace {

constexpr std::size_t statusCode = 2;

}  // namespace

void writeUnknown(BodyWriter& out, std::uint32_t code) {
  out.text("Unknown (");
  out.decimal(code);
  out.character(')');
}

void writeWord(BodyWriter& body, RecordView layout, std::string_view key, std::size_t at,
               Width width, std::string_view word) {
  if (layout.holds(at, byteCount(width))) body.element(key, word);
}

void writeFlags(BodyWriter& body, RecordView layout, std::span<const Flag> flags) {
  for (const Flag& flag : flags) {
    const bool isSet = (layout.u8(flag.offset) & flag.mask) != 0;
    writeWord(body, layout, flag.key, flag.offset, Width::u8, yesNo(isSet));
  }
}

void writeStatus(BodyWriter& out, RecordView data) {
  writeTextOf(out, status_texts, data.u16(statusCode));
}

void writeReason(BodyWriter& body, RecordView data) {
  writeCode(body, data, "Reason", statusCode, Width::u16, status_texts, data.u16(statusCode));
}

void writeSocketSuffix(BodyWriter& summary, RecordView data) {
  summary.text(", Socket ");
  summary.decimal(data.u32(socketNumber.offset));
}

}  // namespace mpuevent::iscsimp
