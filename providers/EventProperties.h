#ifndef MPUEVENT_PROVIDERS_EVENTPROPERTIES_H
#define MPUEVENT_PROVIDERS_EVENTPROPERTIES_H

#include <Pegasus/Common/String.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "forms/Columns.h"
#include "forms/Dates.h"
#include "log/accounting/Accounting.h"
#include "log/framing/LogUnit.h"

namespace mpuevent::provider {

/// A moment as CIM writes it: `YYYYMMDDHHMMSS.000000+000`.
struct CimTime {
  std::string text;
};

/// A CIM property. Its type is that of the same name in mof/MPU_Events.mof; one that is NULL is not
/// made at all.
struct Property {
  using Value = std::variant<Pegasus::Uint16, Pegasus::Uint32, Pegasus::Uint64, Pegasus::String,
                             CimTime, std::vector<Pegasus::String>>;
  std::string name;
  Value value;
};
using Properties = std::vector<Property>;

/// The text as a property may hold it: every character that XML 1.0 forbids becomes U+FFFD.
Pegasus::String xmlSafe(std::string_view utf8);

/// `MPU:enclosure:controller:log:sequence` of a record of 152 bytes or more. What is neither
/// letter, digit, nor one of "-._" of a serial number is its bytes as %XX: two serial numbers never
/// become the same.
std::string instanceId(std::span<const unsigned char> record);

/// The same of bytes that need not be UTF-8: then they are Latin-1.
Pegasus::String xmlSafeBytes(std::string_view bytes);

/// InstanceID of the log at `path`.
Pegasus::String logInstanceId(const std::string& path);

/// Of an MPU_EventLog of which all was read.
Properties logProperties(const std::string& path, const log::Accounting& read);

/// CIM's PerceivedSeverity of an event type: 1, 2, 3, or 0 for none of these.
Pegasus::Uint16 perceivedSeverity(unsigned eventType);

/// Decodes events as an agent would that received them in messages, and tells their facts under the
/// names that the tool's JSON has for them, in CIM's spelling (`event_type_code` is EventTypeCode),
/// and what CIM's own classes ask for. For one thread.
class EventProperties {
 public:
  /// Where an event was read.
  struct Place {
    const std::string& log;   ///< as it is configured
    const std::string& file;  ///< the log, or a file in it
    std::uint64_t index;      ///< in the file, from 0
  };

  explicit EventProperties(std::optional<tool::Moment> epoch);

  /// Of an MPU_EventLogEntry.
  Properties ofEntry(const log::LogUnit& unit, const Place& place);
  /// Of an MPU_EventAlert.
  Properties ofAlert(const log::LogUnit& unit);

 private:
  Properties factsOf(const log::LogUnit& unit, const Place* place);

  const std::optional<tool::Moment> epoch_;
  const Pegasus::String systemName_;
  tool::EventFacts facts_{tool::ShowPayload::automatic};
  tool::FactRow row_;
};

}  // namespace mpuevent::provider

#endif
