#include <ProviderTraceServices.h>

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>

namespace Pegasus {
namespace {

constinit std::atomic<bool> traceSuppressed{true};

}  // namespace

bool ProviderTraceServices::ptsGetTraceSuppressForPid() { return traceSuppressed; }

void ProviderTraceServices::setTraceSuppressed(bool suppressed) { traceSuppressed = suppressed; }

std::string ProviderTraceServices::ptsGetTimeStampString() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  tm local{};
  localtime_r(&now.tv_sec, &local);

  char seconds[64];
  const std::size_t length = strftime(seconds, sizeof(seconds), "%Y-%m-%d %H:%M:%S", &local);
  char milliseconds[32];
  snprintf(milliseconds, sizeof(milliseconds), ".%03ld", now.tv_nsec / 1'000'000L);
  return std::string(seconds, length) + milliseconds;
}

std::string ProviderTraceServices::ptsGetPidString() { return std::to_string(getpid()); }

std::string ProviderTraceServices::ptsGetFileLineString(const char* file, int line, int width) {
  std::string text = std::string(file) + ':' + std::to_string(line);
  text.resize(std::max(text.size(), static_cast<std::size_t>(std::max(width, 0))), ' ');
  return text;
}

std::string ProviderTraceServices::ptsGetIndentString() { return std::string(); }

}  // namespace Pegasus
