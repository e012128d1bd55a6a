#include "log/input/InputWindow.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace mpuevent::log {

InputWindow::InputWindow(ReadBytes read, IsIdle isIdle)
    : read_(std::move(read)),
      isIdle_(std::move(isIdle)),
      bytes_(std::make_unique_for_overwrite<unsigned char[]>(size)) {}

std::size_t InputWindow::readUntil(std::size_t count, bool unlessIdle) {
  assert(count <= farthest);
  // What is written over soon is still in the processor's cache. Moving no more bytes than were
  // passed, or when there is no room, keeps the bytes moved below the bytes passed.
  if (inView() <= position_ || size - position_ < count) {
    std::memmove(bytes_.get(), at(0), inView());
    end_ = inView();
    position_ = 0;
  }
  while (!ended_ && inView() < count) {
    // Asking may take a moment: once until bytes have been waited for.
    idle_ = unlessIdle && (idle_ || (isIdle_ && isIdle_()));
    if (idle_) break;
    const long got = read_(&bytes_[end_], std::min(size - end_, mostAtOnce));
    if (got > 0) {
      end_ += static_cast<std::size_t>(got);
    } else {
      ended_ = true;
      error_ = static_cast<int>(-got);
    }
  }
  return inView();
}

}  // namespace mpuevent::log
