#include "EventDecoder.h"

#include <CMAP/CMAPMessageHeader.h>
#include <CMAP/Quarn_istream.h>
#include <MPUEvent/MPUEvent.h>
#include <cxxabi.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace mpuevent::tool {

namespace {

std::string demangledName(const std::type_info& type) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
  return name ? name.get() : type.name();
}

}  // namespace

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
  const std::type_info& type = typeid(event);
  const auto known = classNames_.find(&type);
  if (known != classNames_.end()) return known->second;
  const std::string name = demangledName(type);
  return classNames_.emplace(&type, name.substr(name.rfind(':') + 1)).first->second;
}

}  // namespace mpuevent::tool
