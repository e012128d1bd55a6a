#include "EventDecoder.h"

#include <CMAP/CMAPMessageHeader.h>
#include <CMAP/Quarn_istream.h>
#include <MPUEvent/MPUEvent.h>

#include <algorithm>

#include "modules/newEvent.h"

namespace mpuevent::tool {

EventDecoder::MessageHeader EventDecoder::messageHeader(const log::LogUnit& unit) {
  MessageHeader header{};
  if (unit.header != nullptr) std::copy_n(unit.header, header.size(), header.begin());
  // An envelope reads (total length - 64) bytes modulo 2^16: a total length that wraps below 64
  // stands for the records that are too long for a message.
  const std::size_t total = header.size() + std::min(unit.record.size(), longestRecord);
  header[log::totalLengthAt] = static_cast<unsigned char>(total >> 8 & 0xFF);
  header[log::totalLengthAt + 1] = static_cast<unsigned char>(total & 0xFF);
  return header;
}

std::unique_ptr<Pegasus::Quarn_Event> EventDecoder::decode(const log::LogUnit& unit) {
  if (unit.record.size() < Record::headerSize) return nullptr;
  // The decoders only read it.
  auto* const record =
      reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(const_cast<unsigned char*>(unit.record.data()));
  const auto length = static_cast<int>(std::min(unit.record.size(), longestRecord));
  return std::unique_ptr<Pegasus::Quarn_Event>(newEvent(record, length));
}

std::unique_ptr<Pegasus::Quarn_Event> EventDecoder::decode(const MessageHeader& header,
                                                           std::span<const unsigned char> record) {
  Pegasus::Quarn_imemstream stream(record.data(),
                                   static_cast<int>(std::min(record.size(), longestRecord)));
  const Pegasus::MPUEvent envelope(Pegasus::CMAPMessageHeader(header.data()), stream);
  return std::unique_ptr<Pegasus::Quarn_Event>(envelope.create_Quarn_Event());
}

std::string_view EventDecoder::className(std::uint8_t source) {
  switch (source) {
#define MODULE(source, word, name) \
  case source:                     \
    return #name "_Event";
#include "modules/Modules.def"
    default:
      return "Quarn_Event";
  }
}

}  // namespace mpuevent::tool
