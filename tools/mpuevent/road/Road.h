#ifndef MPUEVENT_TOOL_ROAD_ROAD_H
#define MPUEVENT_TOOL_ROAD_ROAD_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace mpuevent::tool {

/// What no further attempt will mend.
class RoadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Arrays are spread over this many subjects, and never over another number: an array's records
/// would no longer follow one another.
inline constexpr unsigned roadShards = 16;

/// A message to be sent.
struct Parcel {
  std::string id;  ///< by which the road knows one that it has; empty: it is to be taken anyway
  unsigned shard = 0;
  std::string bytes;
  std::size_t records = 0;
};

/// Takes messages.
class Sink {
 public:
  struct Outcome {
    std::uint64_t ticket;
    bool taken;          ///< the road has it
    bool known;          ///< and had it before
    std::string reason;  ///< why it was not taken
  };

  Sink() = default;
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;
  virtual ~Sink() = default;

  /// Each one has one outcome, sooner or later, however the road is. The parcel may be gone by
  /// then.
  virtual void send(std::uint64_t ticket, const Parcel& parcel) = 0;
  /// Those that came since; waits as long for the first. Throws RoadError.
  virtual std::vector<Outcome> outcomes(std::chrono::milliseconds wait) = 0;
};

/// Gives messages, and gives one that is not acknowledged again later, to any of its users.
class Source {
 public:
  struct Delivery {
    std::span<const unsigned char> bytes;  ///< any; valid until acknowledged or forgotten
    std::string stream;                    ///< on which it came
    std::uint64_t place;                   ///< in there; 0 if not known
  };

  Source() = default;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  virtual ~Source() = default;

  /// At most as many messages, those that are there or else, waiting as long, the first that come.
  /// What is wrong with the road for the time being is told and waited for. Throws RoadError.
  virtual std::vector<Delivery> fetch(std::size_t most, std::chrono::milliseconds wait) = 0;
  /// All that were fetched are done with, and will not come again unless this gets lost.
  virtual void acknowledge() = 0;
  /// All that were fetched will come again.
  virtual void forget() = 0;
};

/// How a road keeps what is on it.
struct StreamSettings {
  unsigned streams = 1;  ///< of which each has its share of the shards: a divisor of roadShards
  unsigned replicas = 3;
  std::chrono::seconds keep{0};        ///< what is older goes
  std::chrono::seconds duplicates{0};  ///< how long an id is known
  std::int64_t mostBytes = -1;         ///< of a stream; what is oldest goes first; -1: any
};

/// How one stream is.
struct StreamState {
  std::string name;
  std::string subjects;
  unsigned replicas;
  std::string leader;               ///< the server that leads; empty: none does
  std::vector<std::string> behind;  ///< servers that have not all of it
  std::uint64_t messages;
  std::uint64_t bytes;
  std::chrono::seconds oldest{0};  ///< how long the first message lies there
  bool hasWorkers;                 ///< whether anybody ever asked for its messages
  std::uint64_t waiting;           ///< messages that workers have not been given,
  std::uint64_t unconfirmed;       ///< that they have not acknowledged,
  std::uint64_t redelivered;       ///< of which they were given these more than once
};

/// A connection to the servers. It may be used by several threads, each with a sink or source of
/// its own, which it must outlive.
class Road {
 public:
  Road() = default;
  Road(const Road&) = delete;
  Road& operator=(const Road&) = delete;
  virtual ~Road() = default;

  virtual std::unique_ptr<Sink> openSink() = 0;
  /// All sources of a name share the messages.
  virtual std::unique_ptr<Source> openSource(const std::string& name) = 0;

  /// Makes the streams, or changes those that are there. Throws RoadError.
  virtual void makeStreams(const StreamSettings& settings) = 0;
  /// Throws RoadError.
  virtual std::vector<StreamState> streams(const std::string& sourceName) = 0;
};

struct RoadAddress {
  std::string servers;  ///< "nats://HOST:PORT,..."
  std::string user;
  std::string password;
  std::string authorities;  ///< file of certificates that sign the servers'; empty: the system's
  std::string certificate;  ///< of this program, a file; empty: none
  std::string key;          ///< its key's file
};

/// Told in a line what is wrong for the time being, and that it no longer is.
using TellRoad = std::function<void(std::string_view)>;

/// Tries until a server answers or `goOn` is false: then null. Throws RoadError for what no further
/// attempt will mend, also if this build has not got the engine.
std::unique_ptr<Road> openRoad(const RoadAddress& address, const TellRoad& tell,
                               const std::function<bool()>& goOn);

}  // namespace mpuevent::tool

#endif
