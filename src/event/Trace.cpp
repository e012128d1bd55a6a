#include "event/Trace.h"

#include <ProviderTraceServices.h>

#include <iostream>
#include <sstream>

namespace mpuevent {

using Pegasus::ProviderTraceServices;

namespace {

constexpr int fileAndLineWidth = 30;

}  // namespace

bool traceWanted() { return !ProviderTraceServices::ptsGetTraceSuppressForPid(); }

void trace(TraceSite site, std::initializer_list<TracePart> message) {
  if (!traceWanted()) return;
  // The line is put together aside and written at once, so that lines of two threads don't mix
  // and a width set on standard output is not used up; numbers look as they would there.
  std::ostringstream line;
  line.imbue(std::cout.getloc());
  line.flags(std::cout.flags());
  line << ProviderTraceServices::ptsGetTimeStampString() << ' '
       << ProviderTraceServices::ptsGetPidString() << ' '
       << ProviderTraceServices::ptsGetFileLineString(site.file, site.line, fileAndLineWidth)
       << ":----: " << ProviderTraceServices::ptsGetIndentString();
  for (const TracePart& part : message) {
    if (part.isNumber_) {
      line << part.number_;
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
