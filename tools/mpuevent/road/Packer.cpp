#include "road/Packer.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "event/HexDigits.h"
#include "log/choosing/RecordBytes.h"
#include "store/RecordKey.h"

namespace mpuevent::tool {

namespace {

// With which a record begins.
constexpr std::size_t kSerialsSize = 2 * Record::serialSize;
constexpr std::size_t kInstanceSize = 4;
constexpr std::uint32_t kBlock = 64;

std::span<const unsigned char> asBytes(std::string_view text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

void appendHex(std::string& to, std::span<const unsigned char> bytes) {
  for (const unsigned char byte : bytes) to.append(hexPairs[byte].data(), hexPairs[byte].size());
}

// A serial number in a message id, which is a header line: no byte of it may end that.
void appendPlain(std::string& to, std::string_view serial) {
  for (const char byte : serial) {
    const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                       (byte >= 'a' && byte <= 'z') || byte == '-';
    if (plain) {
      to += byte;
    } else {
      to += '%';
      appendHex(to, asBytes({&byte, 1}));
    }
  }
}

std::string nameOf(const Record& record) {
  std::string name;
  appendPlain(name, record.controllerSerialNumber());
  return name + '.' + std::to_string(record.logInstance());
}

unsigned shardOf(const Record& record) {
  return hashOf(asBytes(record.enclosureSerialNumber())).back() % roadShards;
}

}  // namespace

void Packer::add(std::span<const unsigned char> bytes, std::uint64_t place) {
  const Record record = log::recordOf(bytes);
  std::array<char, kSerialsSize + kInstanceSize> log{};
  std::copy_n(bytes.begin(), kSerialsSize, log.begin());
  std::copy_n(bytes.begin() + Record::logInstanceAt, kInstanceSize, log.begin() + kSerialsSize);
  const std::uint32_t id = record.sequenceId();
  Open& open = openFor({log.data(), log.size()});
  if (open.block != id / kBlock || !open.frame.hasRoomFor(bytes.size())) give(open);
  if (open.frame.empty()) {
    open.name = nameOf(record);
    open.shard = shardOf(record);
    open.block = id / kBlock;
    open.firstId = id;
    open.firstPlace = place;
  }
  open.lastId = id;
  open.frame.add(bytes);
}

Packer::Open& Packer::openFor(std::string_view log) {
  if (last_ < open_.size() && open_[last_].log == log) return open_[last_];
  for (last_ = 0; last_ < open_.size(); ++last_) {
    if (open_[last_].log == log) return open_[last_];
  }
  if (open_.size() < mostOpen) {
    open_.emplace_back();
  } else {
    last_ = oldestOpen();
    give(open_[last_]);
  }
  open_[last_].log = log;
  return open_[last_];
}

std::size_t Packer::oldestOpen() const {
  const auto oldest = std::min_element(
      open_.begin(), open_.end(),
      [](const Open& one, const Open& other) { return one.firstPlace < other.firstPlace; });
  return static_cast<std::size_t>(oldest - open_.begin());
}

void Packer::give(Open& open) {
  if (open.frame.empty()) return;
  Parcel parcel;
  parcel.records = open.frame.records();
  parcel.shard = open.shard;
  parcel.bytes = open.frame.finish();
  parcel.id =
      open.name + '.' + std::to_string(open.firstId) + '-' + std::to_string(open.lastId) + '.';
  appendHex(parcel.id, hashOf(asBytes(parcel.bytes)));
  give_(std::move(parcel), open.firstPlace);
}

void Packer::flush() {
  std::sort(open_.begin(), open_.end(),
            [](const Open& one, const Open& other) { return one.firstPlace < other.firstPlace; });
  for (Open& open : open_) give(open);
  open_.clear();
}

std::optional<std::uint64_t> Packer::oldest() const {
  std::optional<std::uint64_t> oldest;
  for (const Open& open : open_) {
    if (!open.frame.empty() && (!oldest || open.firstPlace < *oldest)) oldest = open.firstPlace;
  }
  return oldest;
}

}  // namespace mpuevent::tool
