#ifndef MPUEVENT_LOG_ACCOUNTING_ACCOUNTING_H
#define MPUEVENT_LOG_ACCOUNTING_ACCOUNTING_H

#include <cstdint>
#include <string>

#include "log/accounting/Finding.h"

namespace mpuevent::log {

/// What became of the bytes of one input: each is an event's, skipped, or padding.
struct Accounting {
  std::uint64_t events = 0;
  std::uint64_t eventBytes = 0;  ///< message headers included
  std::uint64_t skippedBytes = 0;
  std::uint64_t paddingBytes = 0;

  std::uint64_t bytes() const { return eventBytes + skippedBytes + paddingBytes; }

  void countEvent(std::uint64_t length) {
    ++events;
    eventBytes += length;
  }
  void count(const Finding& finding) {
    if (finding.passesOver()) skippedBytes += finding.length;
    if (finding.kind == Finding::Kind::padding) paddingBytes += finding.length;
  }

  Accounting& operator+=(const Accounting& other) {
    events += other.events;
    eventBytes += other.eventBytes;
    skippedBytes += other.skippedBytes;
    paddingBytes += other.paddingBytes;
    return *this;
  }

  bool operator==(const Accounting&) const = default;
};

/// "300 events, 65300 bytes decoded, 120 skipped, 0 padding"
std::string describe(const Accounting& accounting);

}  // namespace mpuevent::log

#endif
