#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include "log/input/CodecLibraries.h"
#include "log/input/Decompression.h"

namespace mpuevent::log {

namespace {

using Status = Codec::Status;

void require(bool initialised) {
  if (!initialised) throw std::bad_alloc();
}

// The libraries' streams have the same members under the same names.
template <typename Stream>
void lend(Stream& stream, Codec::Buffers& buffers) {
  stream.next_in = const_cast<unsigned char*>(buffers.in);
  stream.avail_in = static_cast<decltype(stream.avail_in)>(buffers.inSize);
  stream.next_out = buffers.out;
  stream.avail_out = static_cast<decltype(stream.avail_out)>(buffers.outSize);
}

template <typename Stream>
void takeBack(const Stream& stream, Codec::Buffers& buffers) {
  buffers.inSize = stream.avail_in;
  buffers.outSize = stream.avail_out;
}

class Gzip : public Codec {
 public:
  Gzip() { require(inflateInit2(&stream_, MAX_WBITS + 16) == Z_OK); }
  ~Gzip() override { inflateEnd(&stream_); }

  Status run(Buffers& buffers) override {
    lend(stream_, buffers);
    const int result = inflate(&stream_, Z_NO_FLUSH);
    takeBack(stream_, buffers);
    if (result == Z_STREAM_END) return Status::streamEnd;
    return result == Z_OK || result == Z_BUF_ERROR ? Status::going : Status::broken;
  }
  void restart() override { inflateReset(&stream_); }

 private:
  z_stream stream_{};
};

class Xz : public Codec {
 public:
  Xz() { Xz::restart(); }
  ~Xz() override { lzma_end(&stream_); }

  Status run(Buffers& buffers) override {
    lend(stream_, buffers);
    const lzma_ret result = lzma_code(&stream_, LZMA_RUN);
    takeBack(stream_, buffers);
    if (result == LZMA_STREAM_END) return Status::streamEnd;
    return result == LZMA_OK || result == LZMA_BUF_ERROR ? Status::going : Status::broken;
  }
  void restart() override {
    constexpr std::uint64_t mostMemory = std::uint64_t{256} << 20;  // of `xz -9`: 65 MiB
    require(lzma_stream_decoder(&stream_, mostMemory, 0) == LZMA_OK);
  }

 private:
  lzma_stream stream_ = LZMA_STREAM_INIT;
};

class Bzip2 : public Codec {
 public:
  Bzip2() { begin(); }
  ~Bzip2() override { BZ2_bzDecompressEnd(&stream_); }

  Status run(Buffers& buffers) override {
    stream_.next_in = reinterpret_cast<char*>(const_cast<unsigned char*>(buffers.in));
    stream_.avail_in = static_cast<unsigned>(buffers.inSize);
    stream_.next_out = reinterpret_cast<char*>(buffers.out);
    stream_.avail_out = static_cast<unsigned>(buffers.outSize);
    const int result = BZ2_bzDecompress(&stream_);
    takeBack(stream_, buffers);
    if (result == BZ_STREAM_END) return Status::streamEnd;
    return result == BZ_OK ? Status::going : Status::broken;
  }
  void restart() override {
    BZ2_bzDecompressEnd(&stream_);
    begin();
  }

 private:
  void begin() {
    stream_ = {};
    require(BZ2_bzDecompressInit(&stream_, 0, 0) == BZ_OK);
  }

  bz_stream stream_{};
};

class Zstd : public Codec {
 public:
  Zstd() : stream_(ZSTD_createDStream()) { require(stream_ != nullptr); }
  ~Zstd() override { ZSTD_freeDStream(stream_); }

  Status run(Buffers& buffers) override {
    ZSTD_inBuffer in{buffers.in, buffers.inSize, 0};
    ZSTD_outBuffer out{buffers.out, buffers.outSize, 0};
    const std::size_t result = ZSTD_decompressStream(stream_, &out, &in);
    buffers.inSize -= in.pos;
    buffers.outSize -= out.pos;
    if (ZSTD_isError(result) != 0) return Status::broken;
    return result == 0 ? Status::streamEnd : Status::going;
  }
  void restart() override {}  // it does so by itself

 private:
  ZSTD_DStream* stream_;
};

}  // namespace

std::unique_ptr<Codec> makeCodec(Packing packing) {
  switch (packing) {
    case Packing::gzip:
      return std::make_unique<Gzip>();
    case Packing::xz:
      return std::make_unique<Xz>();
    case Packing::bzip2:
      return std::make_unique<Bzip2>();
    default:
      return std::make_unique<Zstd>();
  }
}

}  // namespace mpuevent::log
