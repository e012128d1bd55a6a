#include "TraceLines.h"

#include <ProviderTraceServices.h>

#include <iostream>

#include "Output.h"

namespace mpuevent::tool {

TraceLines::TraceLines() : standardOutput_(std::cout.rdbuf(lines_.rdbuf())) {
  Pegasus::ProviderTraceServices::setTraceSuppressed(false);
}

TraceLines::~TraceLines() {
  Pegasus::ProviderTraceServices::setTraceSuppressed(true);
  std::cout.rdbuf(standardOutput_);
}

void TraceLines::passOn() {
  writeToStandardError(lines_.view());
  lines_.str({});
}

}  // namespace mpuevent::tool
