#include "log/input/Decompression.h"

#include "log/input/LazyLibrary.h"

namespace mpuevent::log {

namespace {

constexpr std::size_t kPiece = std::size_t{64} << 10;

}  // namespace

Decompression::Decompression(Packing packing, const ReadBytes& compressed)
    : compressed_(compressed), piece_(kPiece) {
  try {
    codec_ = makeCodec(packing);
  } catch (const LibraryError& error) {
    ended_ = true;
    error_ = error.what();
  }
}

long Decompression::read(unsigned char* to, std::size_t room) {
  while (!ended_) {
    if (at_ == held_ && !inputEnded_ && !refill()) return -readError_;
    if (betweenStreams_ && (at_ == held_ ? inputEnded_ : piece_[at_] == 0)) {
      ended_ = true;  // zeros fill the last block of a tape
      break;
    }
    Codec::Buffers buffers{piece_.data() + at_, held_ - at_, to, room};
    const Codec::Status status = codec_->run(buffers);
    const bool moved = buffers.inSize != held_ - at_ || buffers.outSize != room;
    at_ = held_ - buffers.inSize;
    betweenStreams_ = status == Codec::Status::streamEnd;
    if (betweenStreams_) {
      codec_->restart();
    } else if (status == Codec::Status::broken || (!moved && at_ != held_)) {
      ended_ = true;
      error_ = "the compressed data are damaged";
    } else if (!moved && inputEnded_) {
      ended_ = true;
      error_ = "the compressed data are cut off";
    }
    if (buffers.outSize != room) return static_cast<long>(room - buffers.outSize);
  }
  return 0;
}

// False if reading failed.
bool Decompression::refill() {
  const long got = compressed_(piece_.data(), piece_.size());
  at_ = 0;
  held_ = got > 0 ? static_cast<std::size_t>(got) : 0;
  inputEnded_ = got <= 0;
  if (got < 0) {
    readError_ = static_cast<int>(-got);
    ended_ = true;
  }
  return got >= 0;
}

}  // namespace mpuevent::log
