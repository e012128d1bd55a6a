#ifndef MPUEVENT_LOG_INPUT_PACKING_H
#define MPUEVENT_LOG_INPUT_PACKING_H

#include <cstddef>
#include <optional>
#include <span>

namespace mpuevent::log {

enum class Packing { none, gzip, xz, zstd, bzip2, archive };

/// How many bytes of a file packingOf() looks at.
inline constexpr std::size_t packingSpan = 512;

/// How a file that begins with the bytes is packed; nothing if more bytes must tell, which cannot
/// be when there are packingSpan of them or when they are `all`.
std::optional<Packing> packingOf(std::span<const unsigned char> beginning, bool all);

}  // namespace mpuevent::log

#endif
