#include "road/Sender.h"

#include <algorithm>
#include <utility>

namespace mpuevent::tool {

namespace {

constexpr std::chrono::milliseconds kLook{200};
// What is under way when it is time to stop is mostly acknowledged at once.
constexpr std::chrono::seconds kGrace{2};

}  // namespace

Sender::Sender(Sink& sink, TellRoad tell, std::function<bool()> goOn)
    : sink_(sink), tell_(std::move(tell)), goOn_(std::move(goOn)) {}

void Sender::send(Parcel parcel, std::uint64_t place) {
  poll();
  while (goOn_() && (underWay_.size() >= mostUnderWay || bytesUnderWay_ >= mostBytesUnderWay)) {
    proceed(kLook);
  }
  if (underWay_.empty()) lastTaken_ = Clock::now();
  const std::uint64_t ticket = ++lastTicket_;
  bytesUnderWay_ += parcel.bytes.size();
  places_.insert(place);
  const UnderWay& entry =
      underWay_.emplace(ticket, UnderWay{std::move(parcel), place}).first->second;
  // Behind those that wait for the road to be mended.
  if (postponed_.empty()) {
    sink_.send(ticket, entry.parcel);
  } else {
    postponed_.push_back(ticket);
  }
}

bool Sender::finish() {
  std::optional<Clock::time_point> end;
  while (!underWay_.empty()) {
    if (!goOn_() && !end) end = Clock::now() + kGrace;
    if (end && Clock::now() >= *end) break;
    proceed(kLook);
  }
  return underWay_.empty();
}

std::optional<std::uint64_t> Sender::oldest() const {
  return places_.empty() ? std::nullopt : std::optional<std::uint64_t>(*places_.begin());
}

Sender::Clock::duration Sender::stuckFor() const {
  return underWay_.empty() ? Clock::duration::zero() : Clock::now() - lastTaken_;
}

void Sender::proceed(std::chrono::milliseconds wait) {
  for (const Sink::Outcome& outcome : sink_.outcomes(wait)) settle(outcome);
  if (!postponed_.empty() && Clock::now() >= dueAt_) sendDue();
}

void Sender::settle(const Sink::Outcome& outcome) {
  const auto entry = underWay_.find(outcome.ticket);
  if (entry == underWay_.end()) return;
  if (!outcome.taken) {
    postpone(outcome.ticket, outcome.reason);
    return;
  }
  lastTaken_ = Clock::now();
  pause_ = shortestPause;
  if (inTrouble_) tell_("messages are taken again");
  inTrouble_ = false;
  ++messages_;
  records_ += entry->second.parcel.records;
  if (outcome.known) ++known_;
  bytesUnderWay_ -= entry->second.parcel.bytes.size();
  places_.erase(places_.find(entry->second.place));
  underWay_.erase(entry);
}

void Sender::postpone(std::uint64_t ticket, const std::string& reason) {
  if (!inTrouble_) tell_("a message was not taken, it is sent again: " + reason);
  inTrouble_ = true;
  if (postponed_.empty()) {
    dueAt_ = Clock::now() + pause_;
    pause_ = std::min(pause_ * 2, longestPause);
  }
  postponed_.push_back(ticket);
}

// In the order in which they were to be sent first.
void Sender::sendDue() {
  std::deque<std::uint64_t> due = std::exchange(postponed_, {});
  std::sort(due.begin(), due.end());
  for (const std::uint64_t ticket : due) sink_.send(ticket, underWay_.at(ticket).parcel);
}

}  // namespace mpuevent::tool
