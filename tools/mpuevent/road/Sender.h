#ifndef MPUEVENT_TOOL_ROAD_SENDER_H
#define MPUEVENT_TOOL_ROAD_SENDER_H

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "road/Road.h"

namespace mpuevent::tool {

/// Sends parcels and waits for what the road says of each, with many under way. One that is not
/// taken is sent again after a pause, which grows up to some seconds while none is taken.
class Sender {
 public:
  using Clock = std::chrono::steady_clock;

  /// Told of trouble and of its end. `goOn` is asked while waiting: if false, waiting ends.
  Sender(Sink& sink, TellRoad tell, std::function<bool()> goOn);

  /// With the place of its first record. Waits while too many are under way.
  void send(Parcel parcel, std::uint64_t place);
  /// Waits until all are taken, a moment longer than `goOn` wants; whether they are.
  bool finish();
  /// Takes note of what is known by now, and sends again what is due.
  void poll() { proceed(std::chrono::milliseconds(0)); }

  /// The smallest place of what is not taken yet, if anything is.
  std::optional<std::uint64_t> oldest() const;
  /// Since when nothing has been taken although there was something to take.
  Clock::duration stuckFor() const;

  std::uint64_t messages() const { return messages_; }
  std::uint64_t records() const { return records_; }
  std::uint64_t known() const { return known_; }  ///< messages that the road had before
  std::size_t underWay() const { return underWay_.size(); }

 private:
  static constexpr std::size_t mostUnderWay = 512;
  static constexpr std::size_t mostBytesUnderWay = std::size_t{16} << 20;
  static constexpr std::chrono::milliseconds shortestPause{250};
  static constexpr std::chrono::milliseconds longestPause{5000};

  struct UnderWay {
    Parcel parcel;
    std::uint64_t place;
  };

  void proceed(std::chrono::milliseconds wait);
  void settle(const Sink::Outcome& outcome);
  void postpone(std::uint64_t ticket, const std::string& reason);
  void sendDue();

  Sink& sink_;
  const TellRoad tell_;
  const std::function<bool()> goOn_;
  std::map<std::uint64_t, UnderWay> underWay_;  // by ticket
  std::multiset<std::uint64_t> places_;
  std::deque<std::uint64_t> postponed_;  // tickets
  Clock::time_point dueAt_{};
  Clock::time_point lastTaken_ = Clock::now();
  std::chrono::milliseconds pause_ = shortestPause;
  std::uint64_t lastTicket_ = 0;
  std::size_t bytesUnderWay_ = 0;
  std::uint64_t messages_ = 0;
  std::uint64_t records_ = 0;
  std::uint64_t known_ = 0;
  bool inTrouble_ = false;
};

}  // namespace mpuevent::tool

#endif
