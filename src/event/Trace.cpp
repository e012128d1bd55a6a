#include "event/Trace.h"

#include <ProviderTraceServices.h>

#include <iostream>
#include <sstream>
#include <string>

namespace mpuevent {

using Pegasus::ProviderTraceServices;

namespace {

constexpr int fileAndLineWidth = 30;

}  // namespace

bool traceWanted() { return !ProviderTraceServices::ptsGetTraceSuppressForPid(); }

void writeTrace(TraceSite site, std::initializer_list<TracePart> message) {
  // The line is put together aside and written at once, so that lines of two threads don't mix
  // and a width set on standard output is not used up.
  std::ostringstream line;
  line.imbue(std::cout.getloc());
  line.flags(std::cout.flags());
  line << ProviderTraceServices::ptsGetTimeStampString() << ' '
       << ProviderTraceServices::ptsGetPidString() << ' '
       << ProviderTraceServices::ptsGetFileLineString(site.file, site.line, fileAndLineWidth)
       << ":----: " << ProviderTraceServices::ptsGetIndentString();
  for (const TracePart& part : message) {
    if (part.kind_ == TracePart::Kind::streamNumber) {
      line << part.number_;
    } else if (part.kind_ == TracePart::Kind::decimal) {
      line << std::to_string(part.number_);
    } else if (part.string_ != nullptr) {
      line << *part.string_;
    } else {
      line << part.text_;
    }
  }
  line << '\n';
  const std::string text = line.str();
  std::cout.write(text.data(), static_cast<std::streamsize>(text.size())).flush();
}

}  // namespace mpuevent
