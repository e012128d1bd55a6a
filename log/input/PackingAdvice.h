#ifndef MPUEVENT_LOG_INPUT_PACKINGADVICE_H
#define MPUEVENT_LOG_INPUT_PACKINGADVICE_H

#include <string>
#include <string_view>

#include "log/input/Packing.h"

namespace mpuevent::log {

/// How to decode a packed file with a build that does not unpack: what it is packed with, and a
/// command line. Without a name, such an input. Not for Packing::none.
std::string packingAdvice(Packing packing, std::string_view file);

}  // namespace mpuevent::log

#endif
