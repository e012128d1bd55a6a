#include "EventFeed.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include "LogEntries.h"
#include "log/choosing/RecordBytes.h"
#include "support/RecordBuilder.h"

namespace mpuevent::provider {
namespace {

namespace fs = std::filesystem;
using Ids = std::vector<std::uint32_t>;

std::string message(std::uint32_t sequenceId, const std::string& payload = "\x01\x02\x0A\x0B") {
  return support::message(support::RecordBuilder().sequenceId(sequenceId).payload(payload).str(),
                          sequenceId);
}

/// Messages with damage between them: noise, and a message that ends too early.
std::string damaged(std::uint32_t from, std::uint32_t to) {
  std::string log;
  for (std::uint32_t id = from; id < to; ++id) {
    if (id % 4 == 2) log += std::string(57 * id, '\x99') + message(id).substr(0, 100 + id);
    log += message(id);
  }
  return log;
}

class Feeds : public testing::Test {
 protected:
  Feeds() {
    settings_.events = directory_ / "events";
    settings_.state = directory_ / "state";
    settings_.fromBeginning = true;
  }
  ~Feeds() override { fs::remove_all(directory_); }

  EventFeed feed(int settling = 10) {
    return EventFeed(
        settings_,
        [this](const log::LogUnit& unit) {
          const std::lock_guard lock(mutex_);
          ids_.push_back(log::recordOf(unit.record).sequenceId());
          if (ids_.back() % 5 == 0) throw std::runtime_error("nobody takes it");
        },
        std::chrono::seconds(settling));
  }
  /// Ids handed out since the last call, at least those up to `last`.
  Ids take(std::uint32_t last) {
    for (int i = 0; i < 2000; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      const std::lock_guard lock(mutex_);
      if (!ids_.empty() && ids_.back() == last) return std::exchange(ids_, {});
    }
    ADD_FAILURE() << "event " << last << " did not come";
    return {};
  }
  /// The place of the event has been kept.
  void awaitSettled(std::uint32_t id) {
    const std::string wanted = "sequence " + std::to_string(id) + "\n";
    for (int i = 0; i < 2000; ++i) {
      std::ifstream file(settings_.state + "/cursor");
      const std::string place{std::istreambuf_iterator<char>(file), {}};
      if (place.find(wanted) != std::string::npos) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ADD_FAILURE() << "event " << id << " did not settle";
  }
  void append(const std::string& bytes) {
    std::ofstream(settings_.events, std::ios::binary | std::ios::app) << bytes;
  }
  std::uintmax_t spooled() { return fs::file_size(settings_.state + "/spool"); }

  static Ids range(std::uint32_t from, std::uint32_t to) {
    Ids ids;
    for (; from < to; ++from) ids.push_back(from);
    return ids;
  }

  const fs::path directory_ =
      fs::path(testing::TempDir()) / ("provider_test_" + std::to_string(::getpid()));
  Settings settings_;

 private:
  const bool made_ = fs::create_directories(directory_);
  std::mutex mutex_;
  Ids ids_;
};

TEST_F(Feeds, GoOnInAGrowingLogWhereTheLastOneSettled) {
  {
    const EventFeed first = feed(0);
    append(damaged(1, 10));  // the file was not there
    EXPECT_EQ(take(9), range(1, 10));
    awaitSettled(9);
  }
  append(message(10));
  fs::rename(settings_.events, settings_.events + ".1");
  append(message(11));
  {
    const EventFeed unsettled = feed();
    EXPECT_EQ(take(11), range(10, 12));
  }
  const EventFeed again = feed();
  EXPECT_EQ(take(11), range(10, 12));
  append(message(12));
  EXPECT_EQ(take(12), range(12, 13));
}

TEST_F(Feeds, LeaveOutWhatALogHeldBefore) {
  settings_.fromBeginning = false;
  const std::string next = message(10);
  append(damaged(1, 10) + next.substr(0, 100));
  const EventFeed only = feed();
  awaitSettled(9);
  append(next.substr(100));
  EXPECT_EQ(take(10), range(10, 11));
}

TEST_F(Feeds, LoseNothingThatArrivedInAFifo) {
  ASSERT_EQ(::mkfifo(settings_.events.c_str(), 0600), 0);
  const int fifo = ::open(settings_.events.c_str(), O_RDWR);
  const auto put = [fifo](const std::string& bytes) {
    ASSERT_EQ(::write(fifo, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  };
  const std::string begun = damaged(1, 10);
  put(begun.substr(0, begun.size() - 50));
  {
    const EventFeed first = feed();
    EXPECT_EQ(take(8), range(1, 9));
  }
  put(begun.substr(begun.size() - 50) + damaged(10, 20));
  const EventFeed second = feed(0);
  EXPECT_EQ(take(19), range(1, 20));
  // The file in which they wait does not grow for ever.
  const std::string large(50000, '\x7E');
  for (std::uint32_t id = 20; id < 45; ++id) put(message(id, large));
  EXPECT_EQ(take(44), range(20, 45));
  for (int i = 0; spooled() != 0 && i < 2000; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_EQ(spooled(), 0U);
  put(message(45));
  EXPECT_EQ(take(45), range(45, 46));
  ::close(fifo);
}

TEST_F(Feeds, ListenOnASocket) {
  settings_.events = "unix:" + settings_.events;
  const EventFeed only = feed();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  settings_.events.substr(5).copy(address.sun_path, sizeof address.sun_path - 1);
  for (const std::uint32_t from : {1U, 10U}) {
    const int connection = ::socket(AF_UNIX, SOCK_STREAM, 0);
    while (::connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) !=
           0) {
      std::this_thread::yield();
    }
    const std::string bytes = damaged(from, from + 9);
    ASSERT_EQ(::write(connection, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ::close(connection);
    EXPECT_EQ(take(from + 8), range(from, from + 9));
  }
}

TEST_F(Feeds, AndEntriesOfALogAreOnesThatCanBeFoundAgain) {
  fs::create_directory(directory_ / "log");
  for (const std::uint32_t from : {1U, 10U}) {
    std::ofstream(directory_ / "log" / std::to_string(from), std::ios::binary)
        << damaged(from, from + 9);
  }
  Ids ids;
  const log::Accounting read = forEachEntry(
      directory_ / "log", [&ids](const log::LogUnit& unit, const EventProperties::Place& place) {
        ids.push_back(log::recordOf(unit.record).sequenceId());
        EXPECT_EQ(place.index, (ids.back() - 1) % 9);
        return true;
      });
  EXPECT_EQ(ids, range(1, 19));
  EXPECT_EQ(read.events, 18U);
  EXPECT_EQ(read.bytes(), damaged(1, 10).size() + damaged(10, 19).size());
  int visited = 0;
  forEachEntry(directory_ / "log",
               [&](const log::LogUnit&, const EventProperties::Place&) { return ++visited < 12; });
  EXPECT_EQ(visited, 12);
  EXPECT_THROW(forEachEntry(directory_ / "none", {}), std::runtime_error);
}

TEST_F(Feeds, TakeTheirSettingsFromAFile) {
  const std::string file = directory_ / "provider.conf";
  const auto read = [&file](const std::string& text) {
    std::ofstream(file) << text;
    ::setenv("MPUEVENT_PROVIDER_CONF", file.c_str(), 1);
    return readSettings();
  };
  const Settings set =
      read("# all\n log=/a b \r\nevents = unix:/c\nstate=/d\nstart=begin\nepoch=unix\n");
  EXPECT_EQ(set.log + set.events + set.state, "/a bunix:/c/d");
  EXPECT_TRUE(set.fromBeginning);
  EXPECT_EQ(set.epoch, 0);
  EXPECT_EQ(read("log = /a\n").events, "/a");
  EXPECT_EQ(read("").log, "/var/log/mpuevent.cmap");
  for (const char* wrong :
       {"log", "log = a", "log =", "events = unix:c", "start = now", "epoch = soon", "Log = /a"}) {
    EXPECT_THROW(read(wrong), std::runtime_error) << wrong;
  }
  fs::remove(file);
  EXPECT_THROW(readSettings(), std::runtime_error);
  ::unsetenv("MPUEVENT_PROVIDER_CONF");
}

}  // namespace
}  // namespace mpuevent::provider
