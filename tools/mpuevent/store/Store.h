#ifndef MPUEVENT_TOOL_STORE_STORE_H
#define MPUEVENT_TOOL_STORE_STORE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "log/choosing/Choice.h"
#include "store/Batch.h"
#include "store/RecordKey.h"

namespace mpuevent::tool {

/// What a store could not do.
class StoreError : public std::runtime_error {
 public:
  /// `passing`: trying again later, with a store opened anew, may do (a lock, a lost connection,
  /// a full disk).
  explicit StoreError(const std::string& reason, bool passing = false)
      : std::runtime_error(reason), passing_(passing) {}
  bool isPassing() const { return passing_; }

 private:
  bool passing_;
};

/// A record of a store and where it was read. Valid as long as it is visited.
struct StoredRecord {
  std::span<const unsigned char> record;
  std::optional<std::string_view> file;  ///< UTF-8
  std::uint64_t index;
  std::uint64_t offset;
  bool isDecoded;  ///< false: one that could not be
};

/// What a store has of one log.
struct StoredLog {
  std::string enclosureSerial;
  std::string controllerSerial;
  std::uint32_t logInstance;
  std::uint32_t firstId;  ///< smallest sequence id
  std::uint32_t lastId;   ///< largest
  std::uint64_t events;
};

/// Sequence ids that a store has not, between two of a log that it has.
struct StoredGap {
  std::string enclosureSerial;
  std::string controllerSerial;
  std::uint32_t logInstance;
  std::uint32_t after;   ///< the id before those missing
  std::uint32_t before;  ///< the id behind them
};

/// How records are read.
struct Reading {
  enum Order {
    asStored,  ///< as they came in: the events of a file in its order
    byLog,     ///< log by log, by sequence id
  };
  Order order = asStored;
  std::optional<std::uint64_t> last = {};  ///< no more than so many that came last, all decoded
};

/// A place where each event is once. One thread at a time uses one; several stores, also of several
/// processes and machines, may be open on the same place. Everything throws StoreError.
class Store {
 public:
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  virtual ~Store() = default;

  /// Stores the records that are not there yet and returns how many that were. They are safe, also
  /// from a power failure, when this returns. When it throws, some may be there: to put the batch
  /// again completes it.
  virtual std::size_t put(const Batch& batch) = 0;
  /// For who puts with several stores at once: the next batch of this one comes, in `asStored`,
  /// before those of stores that take their turn later.
  virtual void takeTurn() {}

  /// Gives the records that are chosen to `visit`, in constant memory. What `visit` throws ends it.
  virtual void read(const log::Choice& choice, const Reading& reading,
                    const std::function<void(const StoredRecord&)>& visit) = 0;

  /// For each of the keys, whether the store has its record.
  virtual std::vector<bool> has(std::span<const RecordKey> keys) = 0;
  /// By enclosure, controller and instance; without records that could not be decoded.
  virtual void forEachLog(const std::function<void(const StoredLog&)>& visit) = 0;
  /// Half of 2^32 ids or more between two are no gap.
  virtual void forEachGap(const std::function<void(const StoredGap&)>& visit) = 0;

  /// Decodes the records that `choice` has anew, a batch in a transaction; returns how many.
  /// `progress` is told how many it is by now.
  virtual std::uint64_t decodeAgain(const log::Choice& choice,
                                    const std::function<void(std::uint64_t)>& progress) = 0;
};

/// Whether the name is that of a server, or of a file that is a store or another database.
bool isStore(const std::string& name);
/// Whether the name is that of a file which a store keeps beside its own.
bool isPartOfStore(const std::string& name);

/// How many stores on the same place, each with a thread of its own, are faster than one.
std::size_t storesAtOnce(const std::string& target);

enum class StoreAccess {
  write,  ///< made if there is none, brought to this version's schema if it is older
  read,
};

/// `target` is a path (SQLite) or `postgresql://...`. Throws StoreError, also if this build has not
/// got the engine.
std::unique_ptr<Store> openStore(const std::string& target, StoreAccess access);

}  // namespace mpuevent::tool

#endif
