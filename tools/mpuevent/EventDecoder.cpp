#include "EventDecoder.h"

#include <CMAP/Quarn_istream.h>

#include <algorithm>

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

std::unique_ptr<Pegasus::Quarn_Event> EventDecoder::decode(const MessageHeader& header,
                                                           std::span<const unsigned char> record) {
  Pegasus::Quarn_imemstream stream(record.data(),
                                   static_cast<int>(std::min(record.size(), longestRecord)));
  envelope_.setCMAPMessageHeader(Pegasus::CMAPMessageHeader(header.data()));
  envelope_.deserialize(stream);
  return std::unique_ptr<Pegasus::Quarn_Event>(envelope_.create_Quarn_Event());
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
