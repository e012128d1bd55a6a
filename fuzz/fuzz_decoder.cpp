// One decoder class, MPUEVENT_FUZZ_DECODER, on records with a sound header and any payload.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "EventProperties.h"
#include "FuzzTarget.h"
#include "records/SampleRecords.h"

namespace {

constexpr std::string_view kDecoder = MPUEVENT_FUZZ_DECODER;

const mpuevent::samples::Module& moduleOfDecoder() {
  const auto& modules = mpuevent::samples::modules();
  const auto found =
      std::find_if(modules.begin(), modules.end(),
                   [](const mpuevent::samples::Module& row) { return row.name == kDecoder; });
  mpuevent::fuzz::require(found != modules.end(), "there is a decoder of the name");
  return *found;
}

}  // namespace

/// The input: event id (2 bytes), id version, type, category; how much `evStructLength` is more
/// than the payload's length (2 bytes, modulo 65536); payload.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const mpuevent::samples::Module& module = moduleOfDecoder();
  std::string head(data, data + std::min<std::size_t>(size, 7));
  std::string payload(data + head.size(), data + std::min<std::size_t>(size, 7 + 0xFFFF));
  head.resize(7);
  const auto byte = [&head](std::size_t at) { return static_cast<std::uint8_t>(head[at]); };
  const auto number = [&byte](std::size_t at) { return byte(at) << 8 | byte(at + 1); };
  const std::string whole = mpuevent::support::RecordBuilder()
                                .source(module.source)
                                .id(static_cast<std::uint16_t>(number(0)))
                                .idVersion(byte(2))
                                .type(byte(3))
                                .category(byte(4))
                                .structLength(static_cast<std::uint16_t>(
                                    static_cast<std::size_t>(number(5)) + payload.size()))
                                .payload(payload)
                                .str();
  // An allocation of exactly its size, so that a sanitizer sees each overrun.
  std::vector<char> record(whole.begin(), whole.end());
  mpuevent::fuzz::decodeChecked({record.data(), record.size()}, [&record] {
    return std::unique_ptr<Pegasus::Quarn_Event>(module.construct(
        reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(record.data()), static_cast<int>(record.size())));
  });
  mpuevent::fuzz::require(std::equal(record.begin(), record.end(), whole.begin()),
                          "decoding leaves the record as it is");
  return 0;
}
