#ifndef DECODERS_STARTUP_BODIES_H
#define DECODERS_STARTUP_BODIES_H

#include <Pegasus/Common/String.h>

#include <cstddef>
#include <string_view>

#include "event/RecordView.h"

/// The bodies of start-up events, one function for each kind of payload.
namespace mpuevent::startup {

/// The size at which the register report and the stack dump stop.
constexpr std::size_t bodyLimit = 32768;

/// All lines of a start-up message, up to its NUL.
std::string_view messageText(const Record& record);

Pegasus::String messageBody(const Record& record);
Pegasus::String unknownMessageBody(const Record& record);
Pegasus::String partialMessageBody(const Record& record);
Pegasus::String signalBody(const Record& record);
Pegasus::String registersBody(const Record& record);
Pegasus::String stackBody(const Record& record);

}  // namespace mpuevent::startup

#endif
