#ifndef MPUEVENT_LOG_INPUT_DECOMPRESSION_H
#define MPUEVENT_LOG_INPUT_DECOMPRESSION_H

#include <memory>
#include <string>
#include <vector>

#include "log/input/InputWindow.h"
#include "log/input/Packing.h"

namespace mpuevent::log {

/// One way of compression: a stream after another.
class Codec {
 public:
  struct Buffers {
    const unsigned char* in;
    std::size_t inSize;
    unsigned char* out;
    std::size_t outSize;
  };
  enum class Status { going, streamEnd, broken };

  Codec() = default;
  Codec(const Codec&) = delete;
  Codec& operator=(const Codec&) = delete;
  virtual ~Codec() = default;

  /// Takes from `in` and gives to `out` what it can, and moves both on.
  virtual Status run(Buffers& buffers) = 0;
  /// Another stream follows.
  virtual void restart() = 0;
};

/// Not for Packing::none or Packing::archive. Throws LibraryError.
std::unique_ptr<Codec> makeCodec(Packing packing);

/// What a compressed source is when it is unpacked. libarchive, which could do this too, holds back
/// up to 128 KiB before a break and does not look at gzip's checksums.
class Decompression {
 public:
  /// `compressed` must outlive it.
  Decompression(Packing packing, const ReadBytes& compressed);

  /// As ReadBytes. Where the stream is broken it ends.
  long read(unsigned char* to, std::size_t room);

  /// What is broken, or empty.
  const std::string& error() const { return error_; }

 private:
  bool refill();

  const ReadBytes& compressed_;
  std::unique_ptr<Codec> codec_;
  std::vector<unsigned char> piece_;
  std::size_t at_ = 0;
  std::size_t held_ = 0;
  bool betweenStreams_ = false;
  bool inputEnded_ = false;
  bool ended_ = false;
  int readError_ = 0;
  std::string error_;
};

}  // namespace mpuevent::log

#endif
