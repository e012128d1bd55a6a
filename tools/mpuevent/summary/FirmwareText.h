#ifndef MPUEVENT_TOOL_SUMMARY_FIRMWARETEXT_H
#define MPUEVENT_TOOL_SUMMARY_FIRMWARETEXT_H

#include <Pegasus/Common/String.h>

#include <string>
#include <string_view>

namespace mpuevent::tool {

/// What a text of the firmware is.
enum class FirmwareField { enclosureSerial, controllerSerial, eventId, summary };

/// Every text of a summary that the firmware wrote is made here: in UTF-8, cut short if it is long
/// beyond use.
std::string firmwareText(FirmwareField field, const Pegasus::String& text);
std::string firmwareText(FirmwareField field, std::string_view bytes);

}  // namespace mpuevent::tool

#endif
