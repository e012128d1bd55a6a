#include "EventDecoder.h"

#include <CMAP/Quarn_istream.h>
#include <MPUEvent/MPUEvent.h>

#include <algorithm>
#include <typeindex>
#include <unordered_map>

#include "modules/Headers.h"

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
  const Pegasus::MPUEvent envelope(Pegasus::CMAPMessageHeader(header.data()), stream);
  return std::unique_ptr<Pegasus::Quarn_Event>(envelope.create_Quarn_Event());
}

std::string_view EventDecoder::className(const Pegasus::Quarn_Event& event) {
  static const std::unordered_map<std::type_index, std::string_view> names = {
#define MODULE(source, word, name) {typeid(Pegasus::name##_Event), #name "_Event"},
#include "modules/Modules.def"
  };
  const auto known = names.find(typeid(event));
  return known != names.end() ? known->second : "Quarn_Event";
}

}  // namespace mpuevent::tool
