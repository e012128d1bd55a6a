#ifndef DECODERS_AWR_DUMP_H
#define DECODERS_AWR_DUMP_H

#include <string_view>

#include "event/BodyWriter.h"

namespace mpuevent::awr {

/// Writes an entry for each 16 of the bytes, the last one for what is left: in hex, then as
/// characters.
void writeDump(BodyWriter& entries, std::string_view bytes);

}  // namespace mpuevent::awr

#endif
