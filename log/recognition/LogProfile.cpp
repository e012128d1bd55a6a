#include "log/recognition/LogProfile.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace mpuevent::log {

bool sameLog(const Record& one, const Record& other) {
  return one.logInstance() == other.logInstance() && sameSerials(one, other);
}

std::size_t LogProfile::add(const Record& record) {
  const std::size_t index = count_ < most ? count_++ : std::exchange(oldest_, (oldest_ + 1) % most);
  Writer& writer = writers_[index];
  std::copy_n(record.data(), serialsSize, writer.serials.begin());
  firsts_.set(writer.serials[0]);
  writer.logInstance = record.logInstance();
  ++added_;
  return index;
}

bool LogProfile::knowsSerials(const Record& record) const {
  return std::any_of(writers_.begin(), writers_.begin() + static_cast<std::ptrdiff_t>(count_),
                     [&record](const Writer& writer) { return isBy(writer, record); });
}

std::optional<std::uint32_t> LogProfile::lastSequenceId(const Record& record) const {
  const FoundWriter found = find(record);
  if (!found.isKnown()) return std::nullopt;
  return writers_[found.index].sequenceId;
}

}  // namespace mpuevent::log
