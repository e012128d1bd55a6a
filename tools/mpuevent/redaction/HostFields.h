#ifndef MPUEVENT_TOOL_HOSTFIELDS_H
#define MPUEVENT_TOOL_HOSTFIELDS_H

#include <string>
#include <vector>

#include "log/framing/LogUnit.h"
#include "redaction/Identities.h"

namespace mpuevent::tool {

/// What the iSCSI decoders show of hosts in one event.
struct HostFields {
  std::vector<std::string> names;  ///< as bytes of the record
  std::vector<AddressBytes> addresses;
};

/// Empty for an event of another source.
HostFields hostFieldsOf(const log::LogUnit& unit);

}  // namespace mpuevent::tool

#endif
