#ifndef EVENT_SHORTVECTOR_H
#define EVENT_SHORTVECTOR_H

#include <cassert>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

namespace mpuevent {

/// A vector with room for so many items in itself: as long as it has no more it takes nothing from
/// the heap, and costs nothing to make.
template <class Item, std::size_t room>
class ShortVector {
  static_assert(std::is_trivially_copyable_v<Item> &&
                std::is_trivially_default_constructible_v<Item>);

 public:
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only items that are there are read.
  ShortVector() = default;
  ShortVector(const ShortVector&) = delete;
  ShortVector& operator=(const ShortVector&) = delete;

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const Item* begin() const { return items_; }
  const Item* end() const { return items_ + size_; }
  const Item& operator[](std::size_t index) const {
    assert(index < size_);
    return items_[index];
  }
  Item& back() {
    assert(size_ > 0);
    return items_[size_ - 1];
  }

  void push_back(const Item& item) {
    if (size_ == capacity_) grow();
    items_[size_++] = item;
  }
  void pop_back() { cut(size_ - 1); }
  /// Drops the items from the `size`th on.
  void cut(std::size_t size) {
    assert(size <= size_);
    size_ = size;
  }

 private:
  void grow() {
    auto grown = std::make_unique_for_overwrite<Item[]>(2 * capacity_);
    std::memcpy(grown.get(), items_, size_ * sizeof(Item));
    grown_ = std::move(grown);
    items_ = grown_.get();
    capacity_ *= 2;
  }

  Item first_[room];
  std::unique_ptr<Item[]> grown_;
  Item* items_ = first_;  ///< those, or `grown_`
  std::size_t size_ = 0;
  std::size_t capacity_ = room;
};

}  // namespace mpuevent

#endif
