#ifndef MPUEVENT_TOOL_SUMMARY_FIRMWARETEXT_H
#define MPUEVENT_TOOL_SUMMARY_FIRMWARETEXT_H

#include <Pegasus/Common/String.h>

#include <string>
#include <string_view>

#include "redaction/Redaction.h"

namespace mpuevent::tool {

/// Makes every text of a summary that the firmware wrote: in UTF-8, cut short if it is long beyond
/// use, and with the names of what was redacted.
class FirmwareText {
 public:
  /// Null: nothing was redacted. It must last.
  explicit FirmwareText(const Redaction* redaction) : redaction_(redaction) {}

  std::string operator()(const Pegasus::String& text) const;
  std::string operator()(std::string_view bytes) const;

 private:
  std::string shown(std::string_view utf8) const;

  const Redaction* redaction_;
};

}  // namespace mpuevent::tool

#endif
