#include "road/Stopping.h"

#include <csignal>

namespace mpuevent::tool {

namespace {

volatile std::sig_atomic_t stopAsked = 0;

}  // namespace

void heedStopSignals() {
  struct sigaction action {};
  action.sa_handler = [](int) { stopAsked = 1; };
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGTERM, &action, nullptr);
  sigaction(SIGINT, &action, nullptr);
}

bool isStopAsked() { return stopAsked != 0; }

}  // namespace mpuevent::tool
