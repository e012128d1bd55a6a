#include "support/TraceCapture.h"

#include <ProviderTraceServices.h>

#include <iostream>

namespace mpuevent::support {

using Pegasus::ProviderTraceServices;

TraceCapture::TraceCapture()
    : terminal_(std::cout.rdbuf(written_.rdbuf())),
      suppressed_(ProviderTraceServices::ptsGetTraceSuppressForPid()) {
  ProviderTraceServices::setTraceSuppressed(false);
}

TraceCapture::~TraceCapture() {
  ProviderTraceServices::setTraceSuppressed(suppressed_);
  std::cout.rdbuf(terminal_);
}

std::vector<std::string> TraceCapture::lines() const {
  const std::string pid = ' ' + ProviderTraceServices::ptsGetPidString() + ' ';
  std::vector<std::string> lines;
  std::istringstream written(written_.str());
  for (std::string line; std::getline(written, line);) {
    const std::size_t prefixEnd = line.find(pid);
    if (prefixEnd != std::string::npos) line.erase(0, prefixEnd + pid.size());
    lines.push_back(line);
  }
  return lines;
}

}  // namespace mpuevent::support
