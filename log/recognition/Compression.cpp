#include "log/recognition/Compression.h"

#include <array>

namespace mpuevent::log {

namespace {

using namespace std::string_view_literals;

constexpr auto kCompressions = std::to_array<Compression>({
    {"\x1f\x8b"sv,       "gzip",  "gzip -dc" },
    {"\xfd"
     "7zXZ\0"sv,    "xz",    "xz -dc"   },
    {"\x28\xb5\x2f\xfd", "zstd",  "zstd -dc" },
    {"BZh",              "bzip2", "bzip2 -dc"},
    {"PK\x03\x04",       "zip",   "unzip -p" },
});

}  // namespace

const Compression* compressionOf(std::string_view beginning) {
  for (const Compression& compression : kCompressions) {
    if (beginning.substr(0, compression.magic.size()) == compression.magic) return &compression;
  }
  return nullptr;
}

std::string describe(const Compression& compression, std::string_view file) {
  std::string text = "packed with ";
  text.append(compression.name).append("; try: ").append(compression.command);
  if (!file.empty()) text.append(" '").append(file).append("'");
  return text.append(" | mpuevent decode");
}

}  // namespace mpuevent::log
