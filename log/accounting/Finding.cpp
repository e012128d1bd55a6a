#include "log/accounting/Finding.h"

namespace mpuevent::log {

namespace {

std::string bytesText(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

std::string cutOffText(const Finding& finding) {
  return "cut off: " + bytesText(finding.length) + " of " + std::to_string(finding.statedLength) +
         (finding.toTheEnd ? ", up to the end" : ", where another begins") + "; skipped";
}

}  // namespace

bool Finding::passesOver() const {
  return kind == Kind::skipped || kind == Kind::cutOff || kind == Kind::tooShort ||
         kind == Kind::notALog;
}

std::string describe(const Finding& finding) {
  switch (finding.kind) {
    case Finding::Kind::skipped:
      break;
    case Finding::Kind::cutOff:
      return cutOffText(finding);
    case Finding::Kind::tooShort:
      return "message of " + bytesText(finding.length) +
             " is too short for a record's 152-byte header; skipped";
    case Finding::Kind::notALog:
      return "not recognised as an event log";
    case Finding::Kind::lengthsDisagree:
      return "the message's total length is " + std::to_string(finding.statedLength) +
             ", but its record makes it " + std::to_string(finding.lengthFromRecord) +
             "; taken as " + std::to_string(finding.length);
    case Finding::Kind::padding:
      return bytesText(finding.length) + " of padding, up to the end";
    case Finding::Kind::nowMessages:
      return "messages follow, where records were before";
    case Finding::Kind::nowRecords:
      return "records follow, where messages were before";
  }
  return bytesText(finding.length) + " skipped" + (finding.toTheEnd ? ", up to the end" : "");
}

}  // namespace mpuevent::log
