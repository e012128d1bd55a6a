#ifndef MPUEVENT_TOOL_ROAD_WORKER_H
#define MPUEVENT_TOOL_ROAD_WORKER_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "road/Road.h"
#include "store/Batch.h"
#include "store/Store.h"

namespace mpuevent::tool {

/// What workers have done, together.
struct WorkDone {
  std::atomic<std::uint64_t> messages{0};
  std::atomic<std::uint64_t> records{0};
  std::atomic<std::uint64_t> stored{0};  ///< of these, new in the store
  std::atomic<std::uint64_t> broken{0};  ///< messages that hold no records
  std::mutex writing;                    ///< a store that is a file has one writer at a time
};

/// Takes messages from a source, stores their records and then acknowledges them. Waits for a store
/// that is away; a message that cannot be stored as records is stored as it is.
class Worker {
 public:
  /// The source may be any; `goOn` is asked between and while waiting. What is given must last.
  Worker(Source& source, std::string store, WorkDone& done, const TellRoad& tell,
         const std::function<bool()>& goOn);

  /// Until `goOn` is false, or nothing came for `idle` seconds.
  void run(std::optional<std::uint32_t> idle);

 private:
  using Deliveries = std::vector<Source::Delivery>;

  bool store(const Deliveries& deliveries);
  bool storeOneByOne(const Deliveries& deliveries);
  bool storeAlone(const Source::Delivery& delivery);
  void addTo(Batch& batch, const Source::Delivery& delivery);
  void put(const Batch& batch);
  bool waitAfter(const StoreError& error);

  Source& source_;
  const std::string target_;
  WorkDone& done_;
  const TellRoad& tell_;
  const std::function<bool()>& goOn_;
  std::unique_ptr<Store> store_;
  Batch batch_;
  bool inTrouble_ = false;
};

}  // namespace mpuevent::tool

#endif
