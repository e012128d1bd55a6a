#include "StopSignals.h"

#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigaction is of POSIX.

#include <initializer_list>

namespace mpuevent::tool {

namespace {

volatile sig_atomic_t cameOne = 0;

}  // namespace

StopSignals::StopSignals() {
  struct sigaction action = {};
  action.sa_handler = [](int) { cameOne = 1; };
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction before = {};
    ::sigaction(signal, nullptr, &before);
    // Who starts a program with nohup wants it to stay.
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
  }
}

bool StopSignals::came() { return cameOne != 0; }

}  // namespace mpuevent::tool
