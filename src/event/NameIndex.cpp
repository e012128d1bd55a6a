#include "event/NameIndex.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string>

namespace mpuevent {

NameIndex::NameIndex(std::string_view text, std::size_t longest)
    : text_(text), order_(text.size()), rank_(text.size()), tree_(2 * text.size(), none) {
  sortPlaces(longest);
}

/// Sorts by one character, then by two, four and so on: what follows the first half of a place's
/// characters is itself a place, whose rank is known.
void NameIndex::sortPlaces(std::size_t longest) {
  std::array<std::uint32_t, 257> starts{};
  for (const char c : text_) ++starts[static_cast<unsigned char>(c) + std::size_t{1}];
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  std::array<std::uint32_t, 257> next = starts;
  for (std::size_t i = 0; i < text_.size(); ++i) {
    const auto c = static_cast<unsigned char>(text_[i]);
    rank_[i] = starts[c];
    order_[next[c]++] = static_cast<std::uint32_t>(i);
  }
  std::vector<std::uint32_t> spare(text_.size());
  std::size_t classes = 0;
  for (std::size_t length = 1; length < longest && classes < text_.size(); length *= 2) {
    classes = refineRanks(length, spare);
  }
}

/// From the order by `length` characters to that by twice as many; returns how many different ones
/// there are. A rank is where its places begin in the order.
std::size_t NameIndex::refineRanks(std::size_t length, std::vector<std::uint32_t>& spare) {
  const std::size_t size = order_.size();
  const auto secondRank = [&](std::size_t place) {
    return place + length < size ? rank_[place + length] + 1 : 0;
  };
  // Sorted by the second half alone: first the places that have none.
  std::size_t filled = 0;
  for (std::size_t place = size - std::min(length, size); place < size; ++place) {
    spare[filled++] = static_cast<std::uint32_t>(place);
  }
  for (const std::uint32_t place : order_) {
    if (place >= length) spare[filled++] = static_cast<std::uint32_t>(place - length);
  }
  // Then each to the next free number of its rank.
  std::vector<std::uint32_t> next(size);
  std::iota(next.begin(), next.end(), 0);
  for (const std::uint32_t place : spare) order_[next[rank_[place]]++] = place;

  std::size_t classes = 0;
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < size; ++i) {
    const std::uint32_t place = order_[i];
    const bool isNew = i == 0 || rank_[place] != rank_[order_[i - 1]] ||
                       secondRank(place) != secondRank(order_[i - 1]);
    if (isNew) {
      rank = static_cast<std::uint32_t>(i);
      ++classes;
    }
    spare[place] = rank;
  }
  rank_.swap(spare);
  return classes;
}

void NameIndex::push(Range name) {
  const std::string_view characters = text_.substr(name.begin, name.size());
  const auto before = [&](std::uint32_t place, std::string_view wanted) {
    return text_.substr(place, wanted.size()) < wanted;
  };
  const auto behind = [&](std::string_view wanted, std::uint32_t place) {
    return wanted < text_.substr(place, wanted.size());
  };
  const auto first = std::lower_bound(order_.begin(), order_.end(), characters, before);
  const auto last = std::upper_bound(first, order_.end(), characters, behind);
  begins_.push_back(marked_.size());
  auto left = static_cast<std::size_t>(first - order_.begin()) + order_.size();
  auto right = static_cast<std::size_t>(last - order_.begin()) + order_.size();
  for (; left < right; left /= 2, right /= 2) {
    if (left % 2 != 0) mark(left++);
    if (right % 2 != 0) mark(--right);
  }
}

/// A lower name stays: it is popped later than this one.
void NameIndex::mark(std::size_t node) {
  if (tree_[node] != none) return;
  tree_[node] = static_cast<std::uint32_t>(begins_.size() - 1);
  marked_.push_back(node);
}

void NameIndex::pop() {
  for (; marked_.size() > begins_.back(); marked_.pop_back()) tree_[marked_.back()] = none;
  begins_.pop_back();
}

std::optional<std::size_t> NameIndex::lowestAt(std::size_t place) const {
  if (place >= rank_.size()) return std::nullopt;
  std::uint32_t lowest = none;
  for (std::size_t node = rank_[place] + order_.size(); node > 0; node /= 2) {
    lowest = std::min(lowest, tree_[node]);
  }
  return lowest == none ? std::nullopt : std::optional<std::size_t>(lowest);
}

}  // namespace mpuevent
