#ifndef MPUEVENT_FUZZ_EVENTPROPERTIES_H
#define MPUEVENT_FUZZ_EVENTPROPERTIES_H

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"

namespace mpuevent::fuzz {

using Decode = std::function<std::unique_ptr<Pegasus::Quarn_Event>()>;

/// What an event says, and its JSON line.
struct Shown {
  support::EventFields fields;
  std::string json;
};
Shown show(std::string_view record, const Decode& decode);

/// Decodes a record of 152 bytes or more with `decode`, never null, and requires what must hold
/// whatever the bytes: texts in proportion to the record, and of a thorough input what
/// `requireThoroughly` does.
void decodeChecked(std::string_view record, const Decode& decode);

/// The same event each time, too, and JSON that is valid and tells the same as the event.
void requireThoroughly(std::string_view record, const Decode& decode);

/// A record of the module with a payload of `payloadSize` bytes. The input: event id (2 bytes), id
/// version, type, category; how much `evStructLength` is more than the payload's size (2 bytes,
/// modulo 65536); payload, again and again if it is longer than the input. In an allocation of
/// exactly its size, so that a sanitizer sees each overrun.
std::vector<char> recordOf(const samples::Module& module, std::string_view input,
                           std::size_t payloadSize);

/// Decodes the record with `check`, one of those above, and requires that it stays as it is.
void decodeAs(const samples::Module& module, std::vector<char> record,
              void (*check)(std::string_view record, const Decode& decode));

}  // namespace mpuevent::fuzz

#endif
