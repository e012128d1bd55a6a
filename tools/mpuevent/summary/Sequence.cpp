#include "summary/Sequence.h"

namespace mpuevent::tool {

bool Sequence::add(std::uint32_t id, std::uint32_t timestamp, std::size_t listed) {
  constexpr std::uint32_t half = UINT32_C(1) << 31;
  const std::uint32_t step = id - last_;
  bool lists = false;
  if (!any_) {
    any_ = true;
    first_ = id;
  } else if (step == 0) {
    ++repeats_;
  } else if (step >= half) {
    ++stepsBack_;
  } else if (step > 1) {
    ++gapCount_;
    missing_ += step - 1;
    lists = gaps_.size() < listed;
    if (lists) gaps_.push_back({last_, id, lastTimestamp_, timestamp});
  }
  last_ = id;
  lastTimestamp_ = timestamp;
  return lists;
}

}  // namespace mpuevent::tool
