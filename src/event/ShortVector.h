#ifndef EVENT_SHORTVECTOR_H
#define EVENT_SHORTVECTOR_H

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

namespace mpuevent {

namespace detail {

template <class Item, std::size_t count>
struct ShortVectorRoom {
  alignas(Item) std::array<std::byte, count * sizeof(Item)> bytes;
  std::pmr::monotonic_buffer_resource memory{bytes.data(), bytes.size()};
};

}  // namespace detail

/// A vector with room for so many items in itself: as long as it has no more it takes nothing from
/// the heap. What it takes there it keeps to its end.
template <class Item, std::size_t count>
class ShortVector : detail::ShortVectorRoom<Item, count>, public std::pmr::vector<Item> {
 public:
  ShortVector() : std::pmr::vector<Item>(&this->memory) {}

  void push_back(const Item& item) {
    if (this->capacity() == 0) this->reserve(count);
    std::pmr::vector<Item>::push_back(item);
  }
};

}  // namespace mpuevent

#endif
