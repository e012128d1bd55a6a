// One decoder class, MPUEVENT_FUZZ_DECODER, on records with a sound header and any payload.
#include <algorithm>
#include <string_view>

#include "EventProperties.h"
#include "FuzzTarget.h"
#include "records/SampleRecords.h"

namespace {

constexpr std::size_t kHead = 7;
constexpr std::size_t kLongest = kHead + 0xFFFF;
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

/// The input is what `recordOf` reads.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const mpuevent::samples::Module& module = moduleOfDecoder();
  const std::string_view input(reinterpret_cast<const char*>(data), std::min(size, kLongest));
  const std::size_t payloadSize = input.size() - std::min(input.size(), kHead);
  mpuevent::fuzz::decodeAs(module, mpuevent::fuzz::recordOf(module, input, payloadSize),
                           mpuevent::fuzz::decodeChecked);
  return 0;
}
