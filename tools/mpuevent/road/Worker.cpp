#include "road/Worker.h"

#include <chrono>
#include <string_view>
#include <thread>
#include <utility>

#include "road/Frame.h"

namespace mpuevent::tool {

namespace {

using Clock = std::chrono::steady_clock;

// A transaction: with full messages 8,192 records.
constexpr std::size_t kMessages = 128;
constexpr std::chrono::milliseconds kWait{500};
constexpr std::chrono::seconds kPause{1};

}  // namespace

Worker::Worker(Source& source, std::string store, WorkDone& done, const TellRoad& tell,
               const std::function<bool()>& goOn)
    : source_(source), target_(std::move(store)), done_(done), tell_(tell), goOn_(goOn) {}

void Worker::run(std::optional<std::uint32_t> idle) {
  Clock::time_point last = Clock::now();
  while (goOn_()) {
    const Deliveries deliveries = source_.fetch(kMessages, kWait);
    if (deliveries.empty()) {
      if (idle && Clock::now() - last >= std::chrono::seconds(*idle)) return;
      continue;
    }
    if (!store(deliveries)) {
      source_.forget();
      return;
    }
    source_.acknowledge();
    done_.messages += deliveries.size();
    last = Clock::now();
  }
}

// All functions that store tell whether it is done; it is not if it is time to stop.
bool Worker::store(const Deliveries& deliveries) {
  batch_.clear();
  for (const Source::Delivery& delivery : deliveries) addTo(batch_, delivery);
  for (;;) {
    try {
      put(batch_);
      return true;
    } catch (const StoreError& error) {
      if (!waitAfter(error)) return false;
      if (!error.isPassing()) return storeOneByOne(deliveries);
    }
  }
}

// One of the messages may be what the store cannot take.
bool Worker::storeOneByOne(const Deliveries& deliveries) {
  for (const Source::Delivery& delivery : deliveries) {
    while (!storeAlone(delivery)) {
      if (!goOn_()) return false;
    }
  }
  return true;
}

bool Worker::storeAlone(const Source::Delivery& delivery) {
  Batch batch;
  addTo(batch, delivery);
  try {
    put(batch);
    return true;
  } catch (const StoreError& error) {
    if (!waitAfter(error) || error.isPassing()) return false;
    batch.clear();
    batch.addBroken(delivery.bytes, {delivery.stream, 0, delivery.place}, error.what());
  }
  try {
    put(batch);
    ++done_.broken;
    return true;
  } catch (const StoreError& error) {
    waitAfter(error);  // it is the store, not the message
    return false;
  }
}

void Worker::addTo(Batch& batch, const Source::Delivery& delivery) {
  const FrameContent content = readFrame(delivery.bytes);
  const RecordPlace place{delivery.stream, 0, delivery.place};
  if (!content.problem.empty()) {
    tell_(delivery.stream + ": " + content.problem + "; it is stored as it is");
    batch.addBroken(delivery.bytes, place, content.problem);
    ++done_.broken;
    return;
  }
  std::uint64_t index = 0;
  for (const std::span<const unsigned char> record : content.records) {
    batch.add(record, {place.file, index++, place.offset});
  }
}

void Worker::put(const Batch& batch) {
  std::unique_lock lock(done_.writing, std::defer_lock);
  if (target_.find("://") == std::string::npos) lock.lock();
  if (store_ == nullptr) store_ = openStore(target_, StoreAccess::write);
  done_.stored += store_->put(batch);
  done_.records += batch.rows();
  if (std::exchange(inTrouble_, false)) tell_(target_ + ": records are stored again");
}

// False if it is time to stop.
bool Worker::waitAfter(const StoreError& error) {
  store_.reset();
  if (!inTrouble_) tell_("records are not stored, trying again: " + std::string(error.what()));
  inTrouble_ = true;
  const Clock::time_point end = Clock::now() + kPause;
  while (goOn_() && Clock::now() < end) std::this_thread::sleep_for(kWait / 5);
  return goOn_();
}

}  // namespace mpuevent::tool
