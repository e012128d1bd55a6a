#ifndef MPUEVENT_PROVIDERS_LOGENTRIES_H
#define MPUEVENT_PROVIDERS_LOGENTRIES_H

#include <functional>
#include <string>

#include "EventProperties.h"
#include "log/accounting/Accounting.h"

namespace mpuevent::provider {

/// Takes an event of the log; false if it wants no more.
using VisitEntry =
    std::function<bool(const log::LogUnit& unit, const EventProperties::Place& place)>;

/// Visits the events in a log file, or in the files of a directory one after another, as they are
/// read, compressed or not, and returns what became of their bytes. What is no event is passed
/// over, a file of a directory that cannot be read is told to syslog. Throws `std::runtime_error`
/// if there is no such file or directory, or the file cannot be read.
log::Accounting forEachEntry(const std::string& path, const VisitEntry& visit);

}  // namespace mpuevent::provider

#endif
