#include "log/accounting/Accounting.h"

namespace mpuevent::log {

std::string describe(const Accounting& accounting) {
  return std::to_string(accounting.events) + (accounting.events == 1 ? " event, " : " events, ") +
         std::to_string(accounting.eventBytes) + " bytes decoded, " +
         std::to_string(accounting.skippedBytes) + " skipped, " +
         std::to_string(accounting.paddingBytes) + " padding";
}

}  // namespace mpuevent::log
