#include "EventDecoder.h"

#include <CMAP/CMAPMessageHeader.h>
#include <CMAP/Quarn_istream.h>
#include <MPUEvent/MPUEvent.h>

#include <algorithm>
#include <array>
#include <typeindex>
#include <unordered_map>

#include "modules/Headers.h"

namespace mpuevent::tool {

std::unique_ptr<Pegasus::Quarn_Event> EventDecoder::decode(const log::LogUnit& unit) {
  std::array<unsigned char, Pegasus::CMAPMessageHeader::wireSize> wire{};
  if (unit.header != nullptr) std::copy_n(unit.header, wire.size(), wire.begin());
  // An envelope reads (total length - 64) bytes modulo 2^16: a total length that wraps below 64
  // stands for the records that are too long for a message.
  const std::size_t length = std::min(unit.record.size(), longestRecord);
  const std::size_t totalLength = wire.size() + length;
  wire[10] = static_cast<unsigned char>(totalLength >> 8 & 0xFF);
  wire[11] = static_cast<unsigned char>(totalLength & 0xFF);

  Pegasus::Quarn_imemstream stream(unit.record.data(), static_cast<int>(length));
  const Pegasus::MPUEvent envelope(Pegasus::CMAPMessageHeader(wire.data()), stream);
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
