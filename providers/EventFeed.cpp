#include "EventFeed.h"

#include <syslog.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include "log/choosing/KeptUnit.h"
#include "log/following/Cursor.h"
#include "log/following/FollowedFile.h"
#include "log/following/Spool.h"
#include "log/framing/LogReader.h"
#include "log/input/LogSource.h"

namespace mpuevent::provider {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

/// Follows what arrives until it is stopped or something goes wrong.
class Follower {
 public:
  /// `isNew`: nothing of what it follows was there when the feed began.
  Follower(const Settings& settings, const EventFeed::Deliver& deliver, seconds settling,
           const std::stop_token& stop, bool isNew)
      : deliver_(deliver),
        settling_(settling),
        stop_(stop),
        spool_(makeSpool(settings)),
        cursor_(settings.state + "/cursor"),
        file_(spool_ ? spoolName(settings) : settings.events, true,
              [this] { return isStopped(); }) {
    if (const auto& place = cursor_.place()) {
      file_.beginBehind(place->file, place->time);
    } else {
      if (!spool_ && !settings.fromBeginning && !isNew) knownTo_ = fs::file_size(settings.events);
      if (knownTo_ == 0) cursor_.saveBeginning(file_.beginning());
    }
  }

  void run() {
    while (file_.next()) {
      readPart();
      knownTo_ = 0;
    }
  }

 private:
  /// Up to here events were handed out in the time of a second.
  struct Done {
    Clock::time_point begin;
    log::KeptUnit unit;
  };

  static std::string spoolName(const Settings& settings) { return settings.state + "/spool"; }

  static std::unique_ptr<log::Spool> makeSpool(const Settings& settings) {
    if (settings.events.front() == '/' && !fs::is_fifo(settings.events)) return nullptr;
    return std::make_unique<log::Spool>(settings.events, spoolName(settings));
  }

  // Asked again and again while nothing comes.
  bool isStopped() {
    settle();
    return stop_.stop_requested();
  }

  void readPart() {
    const std::uint64_t begin = file_.begin();
    const log::LogSource source = sourceOf(file_, "events");
    log::LogReader reader(
        source.read, log::LogForm::automatic,
        [this](const log::Finding& finding) { tell(finding); }, source.isIdle, source.readAt);
    log::LogUnit unit;
    for (std::uint64_t index = 0; reader.next(unit) && !isStopped(); ++index) {
      unit.offset += begin;
      const std::size_t header = unit.header != nullptr ? log::messageHeaderSize : 0;
      const bool isOld = unit.offset + header + unit.record.size() <= knownTo_;
      if (!isOld) handOut(unit);
      remember(unit, index, isOld ? Clock::now() - settling_ : Clock::now());
    }
    if (reader.readError() != 0) {
      throw std::system_error(reader.readError(), std::generic_category(), source.name);
    }
  }

  void handOut(const log::LogUnit& unit) {
    try {
      deliver_(unit);
    } catch (const std::exception& error) {
      ::syslog(LOG_ERR, "mpuevent: an event at %llu was not delivered: %s",
               static_cast<unsigned long long>(unit.offset), error.what());
    }
  }

  void remember(const log::LogUnit& unit, std::uint64_t index, Clock::time_point now) {
    if (done_.empty() || now - done_.back().begin >= seconds(1)) {
      done_.push_back({now, log::KeptUnit(unit, 0, index)});
    } else {
      done_.back().unit = log::KeptUnit(unit, 0, index);
    }
  }

  void settle() {
    bool any = false;
    // A second is over when the next has begun, or when it is one more second ago.
    while (!done_.empty() && Clock::now() - done_.front().begin >= settling_ + seconds(1)) {
      const log::KeptUnit& last = done_.front().unit;
      cursor_.moveBehind(last.unit(), last.unit().offset, last.index());
      done_.pop_front();
      any = true;
    }
    if (!any) return;
    cursor_.save();
    if (spool_) spool_->settle(cursor_.place()->file.offset);
  }

  // A line a second at the most: a log may be nothing but damage.
  void tell(const log::Finding& finding) {
    if (!finding.isDamage() || Clock::now() - told_ < seconds(1)) return;
    told_ = Clock::now();
    ::syslog(LOG_WARNING, "mpuevent: offset %llu: %s",
             static_cast<unsigned long long>(finding.offset), describe(finding).c_str());
  }

  const EventFeed::Deliver& deliver_;
  const seconds settling_;
  const std::stop_token& stop_;
  const std::unique_ptr<log::Spool> spool_;  // null: it is a file
  log::Cursor cursor_;
  log::FollowedFile file_;
  std::uint64_t knownTo_ = 0;  // what is in the file before is not handed out
  std::deque<Done> done_;      // and not yet settled
  Clock::time_point told_;
};

}  // namespace

EventFeed::EventFeed(Settings settings, Deliver deliver, seconds settling)
    : settings_(std::move(settings)),
      deliver_(std::move(deliver)),
      settling_(settling),
      thread_([this](const std::stop_token& stop) { run(stop); }) {}

void EventFeed::run(const std::stop_token& stop) const {
  bool isNew = false;
  std::string told;  // once, however often it happens
  while (!stop.stop_requested()) {
    try {
      fs::create_directories(settings_.state);
      // Whether it is a FIFO shows when it is there.
      if (settings_.events.front() == '/' && !fs::exists(settings_.events)) {
        isNew = true;
      } else {
        Follower(settings_, deliver_, settling_, stop, isNew).run();
      }
    } catch (const std::exception& error) {
      if (told != error.what()) ::syslog(LOG_ERR, "mpuevent: %s", error.what());
      told = error.what();
    }
    for (int i = 0; i < 4 && !stop.stop_requested(); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(250));
    }
  }
}

}  // namespace mpuevent::provider
