// NATS JetStream, through libnats: the only file that sees it.
#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <unordered_map>
#include <utility>

#include "road/Frame.h"
#include "road/Libnats.h"
#include "road/Road.h"

namespace mpuevent::tool {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr char kSubject[] = "mpu.raw.";
constexpr std::string_view kStream = "MPU_RAW_";
constexpr std::int64_t kAnswerWait = 5000;  // milliseconds, also for what cannot be told by errors
constexpr milliseconds kRetry{1000};
constexpr milliseconds kGlance{5};

template <typename Type, const auto& destroy>
struct Destroy {
  void operator()(Type* object) const { destroy(object); }
};
template <typename Type, const auto& destroy>
using Owned = std::unique_ptr<Type, Destroy<Type, destroy>>;

using Options = Owned<natsOptions, natsOptions_Destroy>;
using Connection = Owned<natsConnection, natsConnection_Destroy>;
using Context = Owned<jsCtx, jsCtx_Destroy>;
using Message = Owned<natsMsg, natsMsg_Destroy>;
using Subscription = Owned<natsSubscription, natsSubscription_Destroy>;
using StreamInfo = Owned<jsStreamInfo, jsStreamInfo_Destroy>;
using ConsumerInfo = Owned<jsConsumerInfo, jsConsumerInfo_Destroy>;
using MetaData = Owned<jsMsgMetaData, jsMsgMetaData_Destroy>;
using StreamNames = Owned<jsStreamNamesList, jsStreamNamesList_Destroy>;

// Of the call that has just failed on this thread, which may have said more than its status does:
// "(conn.c:2088): what it is".
std::string reasonOf(natsStatus status) {
  std::string text = natsStatus_GetText(status);
  natsStatus last = NATS_OK;
  const char* const error = nats_GetLastError(&last);
  if (last != status || error == nullptr) return text;
  std::string_view more = error;
  const std::size_t place = more.find("): ");
  if (place != std::string_view::npos) more.remove_prefix(place + 3);
  return more.empty() || more == text ? text : text + ": " + std::string(more);
}

void require(natsStatus status) {
  if (status != NATS_OK) throw RoadError("NATS: " + reasonOf(status));
}

// "nats://HOST:PORT,HOST:PORT": those behind the first may leave out how they are spoken to.
std::vector<std::string> serversOf(const std::string& list) {
  std::vector<std::string> servers;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    std::string server = list.substr(at, end - at);
    at = end + 1;
    if (server.empty()) continue;
    if (!servers.empty() && server.find("://") == std::string::npos) {
      server.insert(0, servers.front().substr(0, servers.front().find("://") + 3));
    }
    if (!server.starts_with("nats://") && !server.starts_with("tls://")) {
      throw RoadError("'" + server +
                      "' is no address of a server: nats://HOST:PORT, tls://HOST:PORT");
    }
    servers.push_back(std::move(server));
  }
  if (servers.empty()) throw RoadError("no address of a server");
  return servers;
}

bool isSecure(const RoadAddress& address) {
  return address.servers.find("tls://") != std::string::npos || !address.authorities.empty() ||
         !address.certificate.empty();
}

Context openContext(natsConnection* connection, jsOptions* options) {
  jsCtx* context = nullptr;
  require(natsConnection_JetStream(&context, connection, options));
  return Context(context);
}

// "mpu.raw.0,mpu.raw.4" for the first of four streams.
std::vector<std::string> subjectsOf(unsigned stream, unsigned streams) {
  std::vector<std::string> subjects;
  for (unsigned shard = stream; shard < roadShards; shard += streams) {
    subjects.push_back(kSubject + std::to_string(shard));
  }
  return subjects;
}

std::vector<std::string> streamNames(jsCtx* context) {
  jsStreamNamesList* list = nullptr;
  const natsStatus status = js_StreamNames(&list, context, nullptr, nullptr);
  const StreamNames owned(list);
  if (status == NATS_NOT_FOUND) return {};
  require(status);
  std::vector<std::string> names;
  for (int at = 0; list != nullptr && at < list->Count; ++at) {
    if (std::string_view(list->List[at]).starts_with(kStream)) names.emplace_back(list->List[at]);
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// What the library's threads tell a sink of its messages.
struct Acknowledgements {
  std::mutex mutex;
  std::condition_variable any;
  std::unordered_map<const natsMsg*, std::uint64_t> tickets;
  std::vector<Sink::Outcome> outcomes;

  void add(Sink::Outcome outcome) {
    outcomes.push_back(std::move(outcome));
    any.notify_one();
  }
};

std::string reasonOf(const jsPubAckErr* error) {
  if (error == nullptr) return "no reason given";
  if (error->Err == NATS_NO_RESPONDERS) {
    return "no stream takes it ('mpuevent stream --create' makes them), or none is led by a server";
  }
  return error->ErrText != nullptr ? error->ErrText : natsStatus_GetText(error->Err);
}

void onAcknowledged(jsCtx*, natsMsg* message, jsPubAck* taken, jsPubAckErr* error, void* closure) {
  const Message owned(message);
  auto& acknowledgements = *static_cast<Acknowledgements*>(closure);
  const std::lock_guard lock(acknowledgements.mutex);
  const auto ticket = acknowledgements.tickets.find(message);
  if (ticket == acknowledgements.tickets.end()) return;
  acknowledgements.add({ticket->second, taken != nullptr, taken != nullptr && taken->Duplicate,
                        taken != nullptr ? std::string() : reasonOf(error)});
  acknowledgements.tickets.erase(ticket);
}

class NatsSink : public Sink {
 public:
  /// The acknowledgements must outlive the connection.
  NatsSink(natsConnection* connection, Acknowledgements& acknowledgements)
      : connection_(connection), acknowledgements_(acknowledgements) {
    jsOptions options;
    require(jsOptions_Init(&options));
    options.PublishAsync.MaxPending = -1;  // the sender counts
    options.PublishAsync.AckHandler = onAcknowledged;
    options.PublishAsync.AckHandlerClosure = &acknowledgements_;
    context_ = openContext(connection, &options);
  }

  void send(std::uint64_t ticket, const Parcel& parcel) override {
    const std::string subject = kSubject + std::to_string(parcel.shard);
    natsMsg* message = nullptr;
    require(natsMsg_Create(&message, subject.c_str(), nullptr, parcel.bytes.data(),
                           static_cast<int>(parcel.bytes.size())));
    Message owned(message);
    {
      const std::lock_guard lock(acknowledgements_.mutex);
      acknowledgements_.tickets[message] = ticket;
    }
    jsPubOptions options;
    require(jsPubOptions_Init(&options));
    options.MaxWait = kAnswerWait;
    if (!parcel.id.empty()) options.MsgId = parcel.id.c_str();
    // It is the library's if that succeeds, and may be gone by then.
    const natsStatus status = js_PublishMsgAsync(context_.get(), &message, &options);
    if (status == NATS_OK) {
      static_cast<void>(owned.release());
      return;
    }
    const std::lock_guard lock(acknowledgements_.mutex);
    acknowledgements_.tickets.erase(owned.get());
    acknowledgements_.add({ticket, false, false, reasonOf(status)});
  }

  std::vector<Outcome> outcomes(milliseconds wait) override {
    std::unique_lock lock(acknowledgements_.mutex);
    acknowledgements_.any.wait_for(lock, wait,
                                   [this] { return !acknowledgements_.outcomes.empty(); });
    if (acknowledgements_.outcomes.empty() && natsConnection_IsClosed(connection_)) {
      throw RoadError("NATS: the connection was closed for good");
    }
    return std::exchange(acknowledgements_.outcomes, {});
  }

 private:
  natsConnection* connection_;
  Acknowledgements& acknowledgements_;
  Context context_;
};

class NatsSource : public Source {
 public:
  NatsSource(natsConnection* connection, std::string name, const TellRoad& tell)
      : connection_(connection),
        context_(openContext(connection, nullptr)),
        name_(std::move(name)),
        tell_(tell) {}

  std::vector<Delivery> fetch(std::size_t most, milliseconds wait) override {
    if (natsConnection_IsClosed(connection_)) {
      throw RoadError("NATS: the connection was closed for good");
    }
    try {
      subscribe();
      return fetchAny(most, wait);
    } catch (const Trouble& trouble) {
      return rest(trouble.reason, wait);
    } catch (const RoadError& error) {
      return rest(error.what(), wait);
    }
  }

  void acknowledge() override {
    for (const Message& message : held_) natsMsg_Ack(message.get(), nullptr);
    held_.clear();
    // A message whose acknowledgement gets lost comes again.
    natsConnection_FlushTimeout(connection_, kAnswerWait);
  }

  void forget() override {
    for (const Message& message : held_) natsMsg_Nak(message.get(), nullptr);
    held_.clear();
    natsConnection_FlushTimeout(connection_, kAnswerWait);
  }

 private:
  /// What may pass.
  struct Trouble {
    std::string reason;
  };

  std::vector<Delivery> rest(const std::string& reason, milliseconds wait) {
    // Whatever there was may be there no more after servers have come back.
    streams_.clear();
    if (!inTrouble_) tell_("no messages for now: " + reason);
    inTrouble_ = true;
    std::this_thread::sleep_for(std::min(wait, kRetry));
    return {};
  }

  void subscribe() {
    if (!streams_.empty()) return;
    const std::vector<std::string> names = streamNames(context_.get());
    if (names.empty()) {
      throw Trouble{"there are no streams; 'mpuevent stream --create' makes them"};
    }
    std::vector<Stream> streams;
    streams.reserve(names.size());
    for (const std::string& name : names) streams.push_back({name, subscribeTo(name)});
    streams_ = std::move(streams);
    lastSign_ = std::chrono::steady_clock::now();
  }

  Subscription subscribeTo(const std::string& stream) {
    jsConsumerConfig config;
    require(jsConsumerConfig_Init(&config));
    config.Durable = name_.c_str();
    config.AckPolicy = js_AckExplicit;
    config.AckWait = nanoseconds(std::chrono::seconds(30)).count();
    config.MaxAckPending = 4096;
    jsConsumerInfo* info = nullptr;
    jsErrCode code{};
    natsStatus status =
        js_AddConsumer(&info, context_.get(), stream.c_str(), &config, nullptr, &code);
    const ConsumerInfo owned(info);
    if (status != NATS_OK) throw Trouble{stream + ": " + reasonOf(status)};
    jsSubOptions options;
    require(jsSubOptions_Init(&options));
    options.Stream = stream.c_str();
    options.Consumer = name_.c_str();
    natsSubscription* subscription = nullptr;
    status = js_PullSubscribe(&subscription, context_.get(), nullptr, name_.c_str(), nullptr,
                              &options, &code);
    if (status != NATS_OK) throw Trouble{stream + ": " + reasonOf(status)};
    return Subscription(subscription);
  }

  std::vector<Delivery> fetchAny(std::size_t most, milliseconds wait) {
    std::vector<Delivery> deliveries;
    const std::size_t streams = streams_.size();
    // One stream is waited for, of several first all are asked for what they have.
    for (std::size_t turn = 0; streams > 1 && turn < streams && deliveries.size() < most; ++turn) {
      fetchFrom(streams_[(next_ + turn) % streams], most - deliveries.size(), kGlance, deliveries);
    }
    if (deliveries.empty()) {
      fetchFrom(streams_[next_ % streams], most,
                std::max(wait / static_cast<int>(streams), kGlance), deliveries);
    }
    ++next_;
    noteSign(!deliveries.empty());
    return deliveries;
  }

  struct Stream {
    std::string name;
    Subscription subscription;
  };

  // Waits only if nothing is there.
  void fetchFrom(const Stream& stream, std::size_t most, milliseconds wait,
                 std::vector<Delivery>& to) {
    natsMsgList list{nullptr, 0};
    const natsStatus status = natsSubscription_Fetch(&list, stream.subscription.get(),
                                                     static_cast<int>(most), wait.count(), nullptr);
    for (int at = 0; at < list.Count; ++at) {
      to.push_back(hold(stream, std::exchange(list.Msgs[at], nullptr)));
    }
    natsMsgList_Destroy(&list);
    if (status != NATS_OK && status != NATS_TIMEOUT && status != NATS_NOT_FOUND) {
      throw Trouble{stream.name + ": " + reasonOf(status)};
    }
  }

  Delivery hold(const Stream& stream, natsMsg* message) {
    held_.emplace_back(message);
    const int length = natsMsg_GetDataLength(message);
    const char* const data = natsMsg_GetData(message);
    std::span<const unsigned char> bytes;
    if (data != nullptr && length > 0) {
      bytes = {reinterpret_cast<const unsigned char*>(data), static_cast<std::size_t>(length)};
    }
    jsMsgMetaData* metaData = nullptr;
    const bool known = natsMsg_GetMetaData(&metaData, message) == NATS_OK && metaData != nullptr;
    const MetaData owned(metaData);
    return {bytes, stream.name, known ? metaData->Sequence.Stream : 0};
  }

  // A consumer that is gone, or whose servers came back without it, is silent.
  void noteSign(bool any) {
    const auto now = std::chrono::steady_clock::now();
    if (any) {
      if (std::exchange(inTrouble_, false)) tell_("messages come again");
    } else if (now - lastSign_ < milliseconds(kAnswerWait)) {
      return;
    } else {
      for (const Stream& stream : streams_) requireConsumer(stream.name);
      inTrouble_ = false;
    }
    lastSign_ = now;
  }

  void requireConsumer(const std::string& stream) {
    jsConsumerInfo* info = nullptr;
    const natsStatus status =
        js_GetConsumerInfo(&info, context_.get(), stream.c_str(), name_.c_str(), nullptr, nullptr);
    const ConsumerInfo owned(info);
    if (status != NATS_OK) throw Trouble{stream + ": " + reasonOf(status)};
  }

  natsConnection* connection_;
  Context context_;
  const std::string name_;
  const TellRoad& tell_;
  std::vector<Stream> streams_;
  std::vector<Message> held_;
  std::size_t next_ = 0;
  std::chrono::steady_clock::time_point lastSign_{};
  bool inTrouble_ = false;
};

class NatsRoad : public Road {
 public:
  explicit NatsRoad(TellRoad tell) : tell_(std::move(tell)) {}
  ~NatsRoad() override {
    // The callbacks use what is here, and need not tell of this.
    closing_ = true;
    natsConnection_Close(connection_.get());
    connection_.reset();
    options_.reset();
    nats_CloseAndWait(kAnswerWait);
  }
  NatsRoad(const NatsRoad&) = delete;
  NatsRoad& operator=(const NatsRoad&) = delete;

  void configure(const RoadAddress& address);
  /// False if it may succeed later.
  bool connect(std::string& reason);

  std::unique_ptr<Sink> openSink() override {
    constexpr std::int64_t most = FrameWriter::mostBytes + 1024;
    const std::int64_t taken = natsConnection_GetMaxPayload(connection_.get());
    if (taken < most) {
      throw RoadError("NATS: the servers take messages of " + std::to_string(taken) +
                      " bytes at most (max_payload), it takes " + std::to_string(most));
    }
    return std::make_unique<NatsSink>(connection_.get(), acknowledgements_);
  }
  std::unique_ptr<Source> openSource(const std::string& name) override {
    return std::make_unique<NatsSource>(connection_.get(), name, tell_);
  }
  void makeStreams(const StreamSettings& settings) override;
  std::vector<StreamState> streams(const std::string& sourceName) override;

 private:
  void secure(const RoadAddress& address);
  natsStatus makeStream(jsCtx* context, unsigned stream, const StreamSettings& settings);

  TellRoad tell_;
  std::atomic<bool> closing_{false};
  Options options_;
  Acknowledgements acknowledgements_;
  Connection connection_;
};

void NatsRoad::secure(const RoadAddress& address) {
  natsOptions* const options = options_.get();
  require(natsOptions_SetSecure(options, true));
  if (!address.authorities.empty()) {
    require(natsOptions_LoadCATrustedCertificates(options, address.authorities.c_str()));
  }
  if (!address.certificate.empty()) {
    require(natsOptions_LoadCertificatesChain(options, address.certificate.c_str(),
                                              address.key.c_str()));
  }
}

void NatsRoad::configure(const RoadAddress& address) {
  natsOptions* options = nullptr;
  require(natsOptions_Create(&options));
  options_.reset(options);
  const std::vector<std::string> names = serversOf(address.servers);
  std::vector<const char*> servers;
  servers.reserve(names.size());
  for (const std::string& name : names) servers.push_back(name.c_str());
  require(natsOptions_SetServers(options, servers.data(), static_cast<int>(servers.size())));
  if (!address.user.empty()) {
    require(natsOptions_SetUserInfo(options, address.user.c_str(), address.password.c_str()));
  }
  if (isSecure(address)) secure(address);
  require(natsOptions_SetName(options, "mpuevent"));
  require(natsOptions_SetTimeout(options, kAnswerWait));
  require(natsOptions_SetMaxReconnect(options, -1));
  require(natsOptions_SetReconnectWait(options, kRetry.count()));
  const auto tell = [](natsConnection*, natsSubscription*, natsStatus status, void* closure) {
    static_cast<NatsRoad*>(closure)->tell_(std::string("NATS: ") + natsStatus_GetText(status));
  };
  require(natsOptions_SetErrorHandler(options, tell, this));
  const auto lost = [](natsConnection*, void* closure) {
    const auto& road = *static_cast<NatsRoad*>(closure);
    if (!road.closing_) road.tell_("NATS: the connection is lost, trying to get it back");
  };
  require(natsOptions_SetDisconnectedCB(options, lost, this));
  const auto back = [](natsConnection*, void* closure) {
    static_cast<NatsRoad*>(closure)->tell_("NATS: connected again");
  };
  require(natsOptions_SetReconnectedCB(options, back, this));
}

bool NatsRoad::connect(std::string& reason) {
  natsConnection* connection = nullptr;
  const natsStatus status = natsConnection_Connect(&connection, options_.get());
  connection_.reset(connection);
  if (status == NATS_OK) return true;
  reason = reasonOf(status);
  switch (status) {
    case NATS_NO_SERVER:
    case NATS_TIMEOUT:
    case NATS_IO_ERROR:
    case NATS_SYS_ERROR:
    case NATS_STALE_CONNECTION:
    case NATS_CONNECTION_CLOSED:
    case NATS_CONNECTION_DISCONNECTED:
      return false;
    case NATS_PROTOCOL_ERROR:
      throw RoadError("NATS: the server hung up; does it want a certificate? (" + reason + ")");
    default:
      throw RoadError("NATS: " + reason);
  }
}

natsStatus NatsRoad::makeStream(jsCtx* context, unsigned stream, const StreamSettings& settings) {
  const std::string name = std::string(kStream) + std::to_string(stream);
  const std::vector<std::string> subjects = subjectsOf(stream, settings.streams);
  std::vector<const char*> subjectPointers;
  subjectPointers.reserve(subjects.size());
  for (const std::string& subject : subjects) subjectPointers.push_back(subject.c_str());
  jsStreamConfig config;
  require(jsStreamConfig_Init(&config));
  config.Name = name.c_str();
  config.Subjects = subjectPointers.data();
  config.SubjectsLen = static_cast<int>(subjectPointers.size());
  config.Storage = js_FileStorage;
  config.Retention = js_LimitsPolicy;
  config.Discard = js_DiscardOld;
  config.Replicas = settings.replicas;
  config.MaxAge = nanoseconds(settings.keep).count();
  config.Duplicates = nanoseconds(settings.duplicates).count();
  config.MaxBytes = settings.mostBytes;
  jsErrCode code{};
  const natsStatus status = js_AddStream(nullptr, context, &config, nullptr, &code);
  if (status == NATS_OK || code != JSStreamNameExistErr) return status;
  return js_UpdateStream(nullptr, context, &config, nullptr, &code);
}

void NatsRoad::makeStreams(const StreamSettings& settings) {
  const Context context = openContext(connection_.get(), nullptr);
  const std::size_t there = streamNames(context.get()).size();
  if (there != 0 && there != settings.streams) {
    throw RoadError("there are " + std::to_string(there) +
                    " streams already, and their number cannot change");
  }
  // Servers that have just started have no leader yet.
  const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  for (unsigned stream = 0; stream < settings.streams;) {
    const natsStatus status = makeStream(context.get(), stream, settings);
    if (status == NATS_OK) {
      ++stream;
    } else if (std::chrono::steady_clock::now() >= giveUp ||
               (status != NATS_TIMEOUT && status != NATS_NO_RESPONDERS && status != NATS_ERR)) {
      throw RoadError("NATS: " + reasonOf(status));
    } else {
      std::this_thread::sleep_for(kRetry);
    }
  }
}

void describeConsumer(jsCtx* context, const std::string& name, StreamState& state) {
  jsConsumerInfo* info = nullptr;
  const natsStatus status =
      js_GetConsumerInfo(&info, context, state.name.c_str(), name.c_str(), nullptr, nullptr);
  const ConsumerInfo owned(info);
  state.hasWorkers = status == NATS_OK && info != nullptr;
  if (!state.hasWorkers) return;
  state.waiting = info->NumPending;
  state.unconfirmed = static_cast<std::uint64_t>(info->NumAckPending);
  state.redelivered = static_cast<std::uint64_t>(info->NumRedelivered);
}

StreamState describeStream(jsCtx* context, const std::string& name) {
  jsStreamInfo* info = nullptr;
  require(js_GetStreamInfo(&info, context, name.c_str(), nullptr, nullptr));
  const StreamInfo owned(info);
  StreamState state{};
  state.name = name;
  for (int at = 0; at < info->Config->SubjectsLen; ++at) {
    if (at > 0) state.subjects += ',';
    state.subjects += info->Config->Subjects[at];
  }
  state.replicas = static_cast<unsigned>(info->Config->Replicas);
  state.messages = info->State.Msgs;
  state.bytes = info->State.Bytes;
  if (info->State.Msgs != 0) {
    state.oldest = std::chrono::duration_cast<std::chrono::seconds>(
        std::chrono::system_clock::now().time_since_epoch() - nanoseconds(info->State.FirstTime));
  }
  const jsClusterInfo* const cluster = info->Cluster;
  if (cluster == nullptr || cluster->Name == nullptr) {
    state.leader = "the only server";
    return state;
  }
  if (cluster->Leader != nullptr) state.leader = cluster->Leader;
  for (int at = 0; at < cluster->ReplicasLen; ++at) {
    const jsPeerInfo& peer = *cluster->Replicas[at];
    if (!peer.Current || peer.Offline) state.behind.emplace_back(peer.Name);
  }
  return state;
}

std::vector<StreamState> NatsRoad::streams(const std::string& sourceName) {
  const Context context = openContext(connection_.get(), nullptr);
  std::vector<StreamState> states;
  for (const std::string& name : streamNames(context.get())) {
    states.push_back(describeStream(context.get(), name));
    describeConsumer(context.get(), sourceName, states.back());
  }
  return states;
}

}  // namespace

std::unique_ptr<Road> openRoad(const RoadAddress& address, const TellRoad& tell,
                               const std::function<bool()>& goOn) {
  if (const std::string reason = libnats.load(); !reason.empty()) {
    throw RoadError("NATS needs libnats: " + reason);
  }
  auto road = std::make_unique<NatsRoad>(tell);
  road->configure(address);
  std::string reason;
  for (bool told = false; goOn(); told = true) {
    if (road->connect(reason)) return road;
    if (!told) tell("NATS: no server can be reached, trying again: " + reason);
    std::this_thread::sleep_for(kRetry);
  }
  return nullptr;
}

}  // namespace mpuevent::tool
