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

bool movesOn(std::uint32_t from, std::uint32_t to, std::uint32_t most) {
  return to - from - 1 < most;
}

const LogProfile::Writer* LogProfile::find(const Record& record) const {
  const auto matches = [&record](const Writer& writer) {
    return writer.logInstance == record.logInstance() &&
           std::memcmp(writer.serials.data(), record.data(), serialsSize) == 0;
  };
  if (count_ == 0) return nullptr;
  if (matches(writers_[found_])) return &writers_[found_];
  for (std::size_t index = 0; index < count_; ++index) {
    if (matches(writers_[index])) return &writers_[found_ = index];
  }
  return nullptr;
}

void LogProfile::remember(const Record& record) {
  if (find(record) != nullptr) {
    std::uint32_t& last = writers_[found_].sequenceId;
    ++steps_;
    if (movesOn(last, record.sequenceId())) ++stepsOn_;
    last = record.sequenceId();
    return;
  }
  found_ = count_ < most ? count_++ : std::exchange(oldest_, (oldest_ + 1) % most);
  Writer& writer = writers_[found_];
  std::copy_n(record.data(), serialsSize, writer.serials.begin());
  firsts_.set(writer.serials[0]);
  writer.logInstance = record.logInstance();
  writer.sequenceId = record.sequenceId();
}

bool LogProfile::knowsSerials(const Record& record) const {
  if (count_ != 0 &&
      std::memcmp(writers_[found_].serials.data(), record.data(), serialsSize) == 0) {
    return true;
  }
  return std::any_of(writers_.begin(), writers_.begin() + static_cast<std::ptrdiff_t>(count_),
                     [&record](const Writer& writer) {
                       return std::memcmp(writer.serials.data(), record.data(), serialsSize) == 0;
                     });
}

std::optional<std::uint32_t> LogProfile::lastSequenceId(const Record& record) const {
  const Writer* writer = find(record);
  if (writer == nullptr) return std::nullopt;
  return writer->sequenceId;
}

}  // namespace mpuevent::log
