#ifndef MPUEVENT_PROVIDERS_EVENTFEED_H
#define MPUEVENT_PROVIDERS_EVENTFEED_H

#include <chrono>
#include <functional>
#include <thread>

#include "Settings.h"
#include "log/framing/LogUnit.h"

namespace mpuevent::provider {

/// Hands out the events that arrive where the settings say, one after another on a thread of its
/// own, from its construction to its destruction. What is no event is passed over and told to
/// syslog; what else goes wrong is told there and tried again.
///
/// How far it has come lasts in the directory of the settings: the next feed goes on there. An
/// event counts as done `settling` after it was handed out, as a server may lose what it has not
/// yet sent on: after a restart some events come again, but none is left out.
class EventFeed {
 public:
  /// May throw: the event counts as handed out.
  using Deliver = std::function<void(const log::LogUnit& unit)>;

  EventFeed(Settings settings, Deliver deliver,
            std::chrono::seconds settling = std::chrono::seconds(10));
  /// Waits for the event that is being handed out.
  ~EventFeed() = default;
  EventFeed(const EventFeed&) = delete;
  EventFeed& operator=(const EventFeed&) = delete;

 private:
  void run(const std::stop_token& stop) const;

  const Settings settings_;
  const Deliver deliver_;
  const std::chrono::seconds settling_;
  std::jthread thread_;  // the last member: it uses the others
};

}  // namespace mpuevent::provider

#endif
