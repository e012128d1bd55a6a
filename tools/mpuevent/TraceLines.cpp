#include "TraceLines.h"

#include <ProviderTraceServices.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string_view>

#include "Output.h"
#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

// The lines hold texts of the firmware, which must not command the terminal.
void writeVisible(std::string_view lines) {
  TextBuffer shown;
  while (!lines.empty()) {
    const std::size_t end = std::min(lines.find('\n'), lines.size());
    appendVisible(shown, lines.substr(0, end));
    shown += '\n';
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  writeToStandardError(shown.view());
}

}  // namespace

TraceLines::TraceLines() : standardOutput_(std::cout.rdbuf(lines_.rdbuf())) {
  Pegasus::ProviderTraceServices::setTraceSuppressed(false);
}

TraceLines::~TraceLines() {
  Pegasus::ProviderTraceServices::setTraceSuppressed(true);
  std::cout.rdbuf(standardOutput_);
}

void TraceLines::passOn() {
  if (::isatty(STDERR_FILENO) == 0) {
    writeToStandardError(lines_.view());
  } else {
    writeVisible(lines_.view());
  }
  lines_.str({});
}

}  // namespace mpuevent::tool
