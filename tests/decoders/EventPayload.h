#ifndef MPUEVENT_TESTS_EVENTPAYLOAD_H
#define MPUEVENT_TESTS_EVENTPAYLOAD_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace mpuevent::support {

/// The payload of an event of the I/O manager or of MIP.
inline Payload eventPayload(std::uint32_t eventClass, std::uint32_t number,
                            std::uint32_t dataLength, const Payload& data) {
  Payload payload;
  payload.u32(eventClass).u32(number).u32(0x0BADBEEF).u32(4711).u32(dataLength);
  return payload.bytes(data.str());
}

inline std::unique_ptr<Pegasus::Quarn_Event> decodePayload(std::uint8_t source,
                                                           const Payload& payload) {
  return decode(RecordBuilder().source(source).id(1).payload(payload).str());
}

/// Bytes that count up: 0x81, 0x82, ..., 0xFA, 0, 1, ...
inline Payload ramp(std::size_t size) {
  Payload bytes;
  for (std::size_t i = 0; i < size; ++i) bytes.u8(static_cast<std::uint8_t>((0x81 + i) % 251));
  return bytes;
}

/// The event numbers that some class uses, and those between and beside them: 68 in all.
inline std::vector<std::uint32_t> eventNumbers() {
  std::vector<std::uint32_t> numbers;
  for (std::uint32_t number = 0; number <= 40; ++number) numbers.push_back(number);
  for (std::uint32_t number = 500; number <= 520; ++number) numbers.push_back(number);
  for (std::uint32_t number = 1000; number <= 1005; ++number) numbers.push_back(number);
  return numbers;
}

inline std::string bodyOf(const Pegasus::Quarn_Event& event) { return utf8(event.getBody()); }

inline std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++found;
  return found;
}

/// The records that the body shows, known by their first keys, as " drp+vt"; what comes again at
/// once is named once.
inline std::string recordsIn(const std::string& body) {
  const std::string firstKeys =
      "<lwsem_valid_bit>lwsem <isurp_opcode>isurp <Drive_Number>drp <vt_common_flags>vt "
      "<ext_men>ext <mmsg_length>mmsg <Device>dib <sgt_address>sgt <bcd_btsn>bcd "
      "<rcd_cache_index>rcd <rbt_btsn>rbt <dlm_flags>dlm <msa_full_hi_level>msa "
      "<fer_volume_index>fer <BTSN>vbgt <ndfe_flags>ndfe <Interrupt>interrupt <Message>message "
      "<Volume_Number>number <File>file <QMIR>qmir <INT_STAT =>intstat ";
  std::string found;
  std::string last;
  for (std::size_t at = 0; (at = body.find('<', at)) != std::string::npos; ++at) {
    const std::string key = body.substr(at, body.find('>', at) - at + 1);
    const std::size_t known = firstKeys.find(key);
    if (key == last || known == std::string::npos) continue;
    if (key == "<Volume_Number>" && !found.empty()) continue;  // a field of the record before
    const std::size_t name = known + key.size();
    found += (found.empty() ? ' ' : '+') + firstKeys.substr(name, firstKeys.find(' ', name) - name);
    last = key;
  }
  return found;
}

}  // namespace mpuevent::support

#endif
