#ifndef MPUEVENT_LOG_INPUT_INPUTWINDOW_H
#define MPUEVENT_LOG_INPUT_INPUTWINDOW_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace mpuevent::log {

/// Where the bytes come from: fills at most `room` bytes and returns how many, 0 at the end of the
/// input, or an errno value negated when reading failed.
using ReadBytes = std::function<long(unsigned char* to, std::size_t room)>;

/// The same from any place of the input, which stays where it was; for sources that have places.
using ReadBytesAt = std::function<long(std::uint64_t offset, unsigned char* to, std::size_t room)>;

/// Whether the source has nothing to give for now, so that reading would wait.
using IsIdle = std::function<bool()>;

/// A view of the input that only ever moves forward, of constant size whatever the input's. A
/// failed read counts as the end of the input; error() tells.
class InputWindow {
 public:
  /// The most that hold() can be asked for.
  static constexpr std::size_t farthest = std::size_t{256} << 10;

  /// Without `isIdle` the source is never taken for idle.
  InputWindow(ReadBytes read, IsIdle isIdle);

  /// Reads until `count` bytes from the position on are in view or the input ends. Returns how
  /// many are in view, which may be more; fewer than `count` means that the input ends there.
  /// Pointers from at() are invalid afterwards.
  std::size_t hold(std::size_t count) {
    return inView() >= count ? inView() : readUntil(count, false);
  }

  /// The same, but gives up when the source is idle: with fewer bytes in view ended() tells which.
  std::size_t holdUnlessIdle(std::size_t count) {
    return inView() >= count ? inView() : readUntil(count, true);
  }

  /// Whether `count` bytes from the position on are in view; reads nothing.
  bool inView(std::size_t count) const { return inView() >= count; }

  /// Whether the last byte of the input is in view, or passed.
  bool ended() const { return ended_; }

  /// The byte at `distance` from the position; it must be in view.
  const unsigned char* at(std::size_t distance) const { return &bytes_[position_ + distance]; }

  /// Moves on by `count` bytes, which must be in view.
  void advance(std::size_t count) {
    position_ += count;
    offset_ += count;
  }

  /// The position as the number of bytes before it in the input.
  std::uint64_t offset() const { return offset_; }

  /// The errno value of the read that failed, or 0.
  int error() const { return error_; }

 private:
  static constexpr std::size_t size = std::size_t{512} << 10;
  static constexpr std::size_t mostAtOnce = std::size_t{128} << 10;

  std::size_t inView() const { return end_ - position_; }
  std::size_t readUntil(std::size_t count, bool unlessIdle);

  ReadBytes read_;
  IsIdle isIdle_;
  std::unique_ptr<unsigned char[]> bytes_;
  std::size_t position_ = 0;
  std::size_t end_ = 0;
  std::uint64_t offset_ = 0;
  bool ended_ = false;
  bool idle_ = false;
  int error_ = 0;
};

}  // namespace mpuevent::log

#endif
