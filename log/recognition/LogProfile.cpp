#include "log/recognition/LogProfile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace mpuevent::log {

bool sameSerials(const Record& one, const Record& other) {
  return std::memcmp(one.data(), other.data(), serialsSize) == 0;
}

bool sameLog(const Record& one, const Record& other) {
  return one.logInstance() == other.logInstance() && sameSerials(one, other);
}

const LogProfile::Writer* LogProfile::findOther(const Record& record,
                                                std::uint32_t logInstance) const {
  for (std::size_t index = 0; index < count_; ++index) {
    if (isBy(writers_[index], record, logInstance)) return &writers_[found_ = index];
  }
  return nullptr;
}

void LogProfile::add(const Record& record) {
  found_ = count_ < most ? count_++ : std::exchange(oldest_, (oldest_ + 1) % most);
  Writer& writer = writers_[found_];
  std::copy_n(record.data(), serialsSize, writer.serials.begin());
  firsts_.set(writer.serials[0]);
  writer.logInstance = record.logInstance();
}

bool LogProfile::knowsOtherSerials(const Record& record) const {
  return std::any_of(writers_.begin(), writers_.begin() + static_cast<std::ptrdiff_t>(count_),
                     [&record](const Writer& writer) { return isBy(writer, record); });
}

std::optional<std::uint32_t> LogProfile::lastSequenceId(const Record& record) const {
  const Writer* writer = find(record);
  if (writer == nullptr) return std::nullopt;
  return writer->sequenceId;
}

}  // namespace mpuevent::log
