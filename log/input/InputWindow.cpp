#include "InputWindow.h"

#include <cstring>
#include <utility>

namespace mpuevent::log {

InputWindow::InputWindow(ReadBytes read)
    : read_(std::move(read)), bytes_(std::make_unique_for_overwrite<unsigned char[]>(size)) {}

std::size_t InputWindow::readUntil(std::size_t count) {
  // Moving only when there is no room keeps the bytes moved below the bytes passed.
  if (size - position_ < count) {
    std::memmove(bytes_.get(), at(0), end_ - position_);
    end_ -= position_;
    position_ = 0;
  }
  while (!ended_ && end_ - position_ < count) {
    const long got = read_(&bytes_[end_], size - end_);
    if (got > 0) {
      end_ += static_cast<std::size_t>(got);
    } else {
      ended_ = true;
      error_ = static_cast<int>(-got);
    }
  }
  return end_ - position_;
}

}  // namespace mpuevent::log
