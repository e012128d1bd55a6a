#include "store/Progress.h"

#include <unistd.h>

#include "Output.h"
#include "forms/Numbers.h"

namespace mpuevent::tool {

namespace {

constexpr std::chrono::milliseconds kPause{200};
constexpr std::string_view kToLineBegin = "\033[K\r";

}  // namespace

Progress::Progress() : shown_(::isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
  if (any_) writeToStandardError(kToLineBegin);
}

void Progress::tell(std::uint64_t events, std::uint64_t files) {
  const Clock::time_point now = Clock::now();
  if (!shown_ || now - told_ < kPause) return;
  told_ = now;
  any_ = true;
  const std::chrono::duration<double> passed = now - begin_;
  TextBuffer line;
  appendDecimal(line, events);
  line += " events, ";
  if (files != 0) {
    appendDecimal(line, files);
    line += files == 1 ? " file, " : " files, ";
  }
  appendDecimal(line, static_cast<std::uint64_t>(static_cast<double>(events) / passed.count()));
  line += "/s";
  line += kToLineBegin;
  writeToStandardError(line.view());
}

}  // namespace mpuevent::tool
