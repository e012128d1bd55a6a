#include "log/input/Packing.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace mpuevent::log {

namespace {

using namespace std::string_view_literals;

struct Magic {
  std::string_view bytes;  // "?" is any byte
  Packing packing;
};

// bzip2 has a first block or none, zip files or none.
constexpr Magic kMagics[] = {
    {"\x1f\x8b\x08"sv,                 Packing::gzip   },
    {"\xfd"
     "7zXZ\0"sv,                  Packing::xz     },
    {"\x28\xb5\x2f\xfd"sv,             Packing::zstd   },
    {"BZh?1AY&SY"sv,                   Packing::bzip2  },
    {"BZh?\x17\x72\x45\x38\x50\x90"sv, Packing::bzip2  },
    {"PK\x03\x04"sv,                   Packing::archive},
    {"PK\x05\x06"sv,                   Packing::archive},
};

// Whether the text begins with the magic, as far as it goes.
bool agrees(std::string_view text, std::string_view magic) {
  const std::size_t size = std::min(text.size(), magic.size());
  return std::equal(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(size), magic.begin(),
                    [](char byte, char expected) { return expected == '?' || byte == expected; });
}

// A tar begins with a header of 512 bytes: a name, numbers in octal digits, and their checksum.
constexpr std::size_t kModeAt = 100;
constexpr std::size_t kModeEnd = 108;
constexpr std::size_t kChecksumAt = 148;
constexpr std::size_t kChecksumEnd = 156;

bool isOctal(char c) { return c >= '0' && c <= '7'; }

bool mayBecomeTar(std::string_view text) {
  if (text.starts_with('\0')) return false;
  if (text.size() < kModeEnd) return true;
  const std::string_view mode = text.substr(kModeAt, kModeEnd - kModeAt);
  return std::any_of(mode.begin(), mode.end(), isOctal) &&
         std::all_of(mode.begin(), mode.end(),
                     [](char c) { return isOctal(c) || c == ' ' || c == '\0'; });
}

bool isTar(std::string_view header) {
  std::size_t sum = 0;
  std::size_t stored = 0;
  for (std::size_t at = 0; at < packingSpan; ++at) {
    const bool inChecksum = at >= kChecksumAt && at < kChecksumEnd;
    sum += inChecksum ? std::size_t{' '} : static_cast<unsigned char>(header[at]);
    if (inChecksum && isOctal(header[at])) {
      stored = stored * 8 + static_cast<std::size_t>(header[at] - '0');
    }
  }
  return mayBecomeTar(header) && stored == sum;
}

}  // namespace

std::optional<Packing> packingOf(std::span<const unsigned char> beginning, bool all) {
  const std::string_view text(reinterpret_cast<const char*>(beginning.data()), beginning.size());
  bool undecided = false;
  for (const auto& [magic, packing] : kMagics) {
    if (!agrees(text, magic)) continue;
    if (text.size() >= magic.size()) return packing;
    undecided = true;
  }
  if (text.size() >= packingSpan) return isTar(text) ? Packing::archive : Packing::none;
  if (!all && (undecided || mayBecomeTar(text))) return std::nullopt;
  return Packing::none;
}

}  // namespace mpuevent::log
