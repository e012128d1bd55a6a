#include <MPUEvent/AWR8P_Event.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "decoders/awr/dump.h"
#include "event/Entry.h"
#include "event/OwnEventId.h"
#include "event/RecordView.h"
#include "event/ShortVector.h"
#include "event/Text.h"

namespace mpuevent::awr {

namespace {

enum class NodeType : std::uint32_t { text = 0, binary = 1, container = 2, eventName = 3 };

constexpr std::size_t headSize = 8;
constexpr std::size_t longestPayload = 0xFFFF;
constexpr std::uint64_t timesShown = 8;

/// A node whose head is held. Its data is as long as it says, up to the end of the payload.
struct Node {
  NodeType type;
  bool hasChildren;
  std::size_t data;
  std::size_t end;
};

/// The nodes of a payload.
class Nodes {
 public:
  explicit Nodes(RecordView payload)
      : payload_(payload),
        end_(payload.size() == RecordView::toEnd ? longestPayload : payload.size()) {}

  std::size_t payloadEnd() const { return end_; }
  bool holdsHead(std::size_t at) const { return at <= end_ && headSize <= end_ - at; }

  /// Children are counted with a signed length, siblings are located with the same bits unsigned:
  /// a container of negative length has no children and ends its parent.
  Node at(std::size_t at) const {
    const auto type = static_cast<NodeType>(payload_.u32(at));
    const std::size_t data = at + headSize;
    const std::size_t length = std::min<std::size_t>(payload_.u32(at + 4), end_ - data);
    return {type, type == NodeType::container && payload_.s32(at + 4) > 0, data, data + length};
  }

  std::string_view bytes(const Node& node) const {
    return payload_.bytes(node.data, node.end - node.data);
  }

  /// The bytes that a node shows. A text ends at its NUL, whatever length its node gives.
  std::string_view shown(const Node& node) const {
    switch (node.type) {
      case NodeType::text:
      case NodeType::eventName:
        return payload_.text(node.data, end_ - node.data);
      case NodeType::binary:
        return bytes(node);
      case NodeType::container:
        break;
    }
    return {};
  }

 private:
  RecordView payload_;
  std::size_t end_;
};

/// Calls `visit` with the type and bytes of the node at the payload's start and of those in it, in
/// the order of the record.
///
/// A node may claim more bytes than its container holds. The container's next sibling then stands
/// in the middle of that node, so that the same bytes are visited again, at every depth once more:
/// a small record could show more than any machine can hold. The walk therefore stops after
/// several times the payload's size. No other tree gets there: its bytes come once, or twice where
/// a text is longer than its node says.
template <class Visit>
void forEachNode(const Nodes& nodes, Visit visit) {
  struct Siblings {
    std::size_t next;
    std::size_t end;
  };
  ShortVector<Siblings, 16> open;  // innermost last
  open.push_back({0, 1});          // the payload is one node
  std::uint64_t left = timesShown * nodes.payloadEnd();
  while (!open.empty()) {
    Siblings& siblings = open.back();
    if (siblings.next >= siblings.end || !nodes.holdsHead(siblings.next)) {
      open.pop_back();
      continue;
    }
    const Node node = nodes.at(siblings.next);
    siblings.next = node.end;
    const std::string_view shown = nodes.shown(node);
    const std::uint64_t cost = headSize + shown.size();
    if (cost > left) return;
    left -= cost;
    if (node.hasChildren) {
      open.push_back({node.data, node.end});
    } else {
      visit(node.type, shown);
    }
  }
}

/// Appends what the nodes show to the event's Body; sets its Summary, if that is not taken yet, and
/// EventID. Returns whether a node brought that.
bool decode(Pegasus::QuarnEvent& event, int& summaryTaken, const Nodes& nodes) {
  BodyBuffer entries(Separator::none);
  bool hasEventId = false;
  std::string_view eventId;  // the last one counts
  forEachNode(nodes, [&](NodeType type, std::string_view shown) {
    switch (type) {
      case NodeType::text:
        writeEntry(entries, "_", shown);
        if (summaryTaken == 0) event.setSummary(toString(shown));
        summaryTaken = 1;
        break;
      case NodeType::binary:
        writeDump(entries, shown);
        break;
      case NodeType::container:
        break;
      case NodeType::eventName:
        eventId = shown;
        hasEventId = true;
        break;
    }
  });
  if (hasEventId) event.setEventID(toString(eventId));
  appendEntries(event, entries);
  return hasEventId;
}

}  // namespace

}  // namespace mpuevent::awr

namespace Pegasus {

using mpuevent::RecordView;
using mpuevent::awr::Nodes;

AWR8P_Event::AWR8P_Event(EmpEvLogMsg_s* bytes, int length)
    : QuarnEvent(mpuevent::withOwnEventId(bytes), length), summaryTaken_(0) {
  if (bytes == nullptr) return;
  const mpuevent::Record record(bytes, length);
  const bool hasEventId = mpuevent::awr::decode(*this, summaryTaken_, Nodes(record.payload()));
  if (!hasEventId) setEventID(mpuevent::decimalString(record.id()));
}

AWR8P_Event::~AWR8P_Event() = default;

void AWR8P_Event::awr8p_parse_evt(awrEvtHdr_s* node) {
  if (node == nullptr) return;
  const Nodes nodes(RecordView::unbounded(node));
  mpuevent::awr::decode(*this, summaryTaken_, nodes);
}

void AWR8P_Event::awr8p_dump_bin(awrEvtHdr_s* node) {
  if (node == nullptr) return;
  const Nodes nodes(RecordView::unbounded(node));
  mpuevent::BodyBuffer entries(mpuevent::Separator::none);
  mpuevent::awr::writeDump(entries, nodes.bytes(nodes.at(0)));
  mpuevent::appendEntries(*this, entries);
}

}  // namespace Pegasus
