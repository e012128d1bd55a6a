#ifndef MPUEVENT_LOG_INPUT_CODECLIBRARIES_H
#define MPUEVENT_LOG_INPUT_CODECLIBRARIES_H

// Templates take the types of functions without these.
#define lzma_attr_warn_unused_result
#define lzma_nothrow

#include <bzlib.h>
#include <lzma.h>
#include <zlib.h>
#include <zstd.h>

#include "log/input/LazyLibrary.h"

// A static program has the functions linked, by the same names.
#ifdef MPUEVENT_LIBZ

namespace mpuevent::log {

// What decompresses: for Codecs.cpp alone.
inline constinit LazyLibrary libbz2(MPUEVENT_LIBBZ2);
inline constinit LazyLibrary liblzma(MPUEVENT_LIBLZMA);
inline constinit LazyLibrary libz(MPUEVENT_LIBZ);
inline constinit LazyLibrary libzstd(MPUEVENT_LIBZSTD);

// What is called of them; without its row here a function does not link.
#define CODEC_FUNCTION(library, name) \
  inline constinit const LazyFunction<decltype(::name)> name(library, #name)
CODEC_FUNCTION(libbz2, BZ2_bzDecompress);
CODEC_FUNCTION(libbz2, BZ2_bzDecompressEnd);
CODEC_FUNCTION(libbz2, BZ2_bzDecompressInit);
CODEC_FUNCTION(liblzma, lzma_code);
CODEC_FUNCTION(liblzma, lzma_end);
CODEC_FUNCTION(liblzma, lzma_stream_decoder);
CODEC_FUNCTION(libz, inflate);
CODEC_FUNCTION(libz, inflateEnd);
CODEC_FUNCTION(libz, inflateInit2_);
CODEC_FUNCTION(libz, inflateReset);
CODEC_FUNCTION(libzstd, ZSTD_createDStream);
CODEC_FUNCTION(libzstd, ZSTD_decompressStream);
CODEC_FUNCTION(libzstd, ZSTD_freeDStream);
CODEC_FUNCTION(libzstd, ZSTD_isError);
#undef CODEC_FUNCTION

}  // namespace mpuevent::log

#endif

#endif
