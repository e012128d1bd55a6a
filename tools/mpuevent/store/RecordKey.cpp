#include "store/RecordKey.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>

#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kHeaderSize = 152;

std::string shown(std::string_view bytes) {
  Utf8Text text;
  return std::string(std::string_view(text.assignBytes(bytes)));
}

}  // namespace

RecordHash hashOf(std::span<const unsigned char> record) {
  XXH128_canonical_t canonical;
  XXH128_canonicalFromHash(&canonical, XXH3_128bits(record.data(), record.size()));
  RecordHash hash;
  std::copy_n(std::begin(canonical.digest), hash.size(), hash.begin());
  return hash;
}

RecordKey keyOf(std::span<const unsigned char> bytes) {
  if (bytes.size() < kHeaderSize) return {{}, {}, 0, 0, 0, hashOf(bytes)};
  const Record record = log::recordOf(bytes);
  return {shown(record.enclosureSerialNumber()),
          shown(record.controllerSerialNumber()),
          record.logInstance(),
          record.sequenceId(),
          record.timestamp(),
          hashOf(bytes)};
}

}  // namespace mpuevent::tool
