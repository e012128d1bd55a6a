#include <MPUEvent/AWR8P_Event.h>

#include <algorithm>
#include <vector>

#include "decoders/awr/dump.h"
#include "event/Entry.h"
#include "event/RecordView.h"
#include "event/Text.h"

namespace mpuevent::awr {

namespace {

enum class NodeType : std::uint32_t { text = 0, binary = 1, container = 2, eventName = 3 };

constexpr std::size_t headerSize = 8;
constexpr std::size_t longestPayload = 0xFFFF;

/// A node whose header is held, cut to the container that it stands in.
struct Node {
  NodeType type;
  bool hasChildren;
  std::size_t data;
  std::size_t end;
};

/// The node at `at` of a container that ends at `containerEnd`. A container counts its children
/// down from a signed length, so that one below 0 has none; but where the next node stands an
/// unsigned length says, and after such a one there is no next.
Node nodeAt(RecordView payload, std::size_t at, std::size_t containerEnd) {
  const auto type = static_cast<NodeType>(payload.u32(at));
  const std::size_t data = at + headerSize;
  const std::size_t length = std::min<std::size_t>(payload.u32(at + 4), containerEnd - data);
  return {type, type == NodeType::container && payload.s32(at + 4) > 0, data, data + length};
}

/// Calls `visit` for the node at the payload's start and for those in it, in the order of the
/// record; for containers only if they have no children.
///
/// The work is linear in the payload for any bytes: a step moves on by a header at least and never
/// back, or it leaves a container that an earlier step has entered. As no node reaches past its
/// container, the walk goes on in the outer container where it left the inner one. Nor does what
/// the nodes show overlap: the data of a node is stepped over whole, and a text, which pays no heed
/// to lengths, ends before the next node shown, as the type of that begins with a zero byte.
template <class Visit>
void forEachNode(RecordView payload, Visit visit) {
  if (!payload.holds(0, headerSize)) return;
  std::size_t at = 0;
  std::vector<std::size_t> ends = {nodeAt(payload, 0, payload.size()).end};  // innermost last
  while (!ends.empty()) {
    const std::size_t end = ends.back();
    if (end - at < headerSize) {
      at = end;
      ends.pop_back();
      continue;
    }
    const Node node = nodeAt(payload, at, end);
    if (node.hasChildren) {
      ends.push_back(node.end);
      at = node.data;
    } else {
      visit(node);
      at = node.end;
    }
  }
}

/// A node of which nothing is known but where it is, with the data that it claims.
RecordView trustingLength(const Pegasus::awrEvtHdr_s* node) {
  const std::size_t length = RecordView(node, headerSize).u32(4);
  return {node, headerSize + std::min(length, longestPayload)};
}

/// The same, but a text is trusted to have its NUL.
RecordView trusting(const Pegasus::awrEvtHdr_s* node) {
  const auto type = static_cast<NodeType>(RecordView(node, headerSize).u32(0));
  const bool endsAtNul = type == NodeType::text || type == NodeType::eventName;
  return endsAtNul ? RecordView(node, headerSize + longestPayload) : trustingLength(node);
}

}  // namespace

}  // namespace mpuevent::awr

namespace Pegasus {

using mpuevent::BodyWriter;
using mpuevent::RecordView;
using mpuevent::Separator;
using mpuevent::toString;
using mpuevent::awr::Node;
using mpuevent::awr::NodeType;

AWR8P_Event::AWR8P_Event(EmpEvLogMsg_s* record, int length)
    : QuarnEvent(record, length), summaryTaken_(0) {
  if (record == nullptr) return;
  const RecordView payload = mpuevent::Record(record, length).payload();
  show(payload.data(), static_cast<unsigned int>(payload.size()));
}

AWR8P_Event::~AWR8P_Event() = default;

void AWR8P_Event::awr8p_parse_evt(awrEvtHdr_s* node) {
  const RecordView trusted = mpuevent::awr::trusting(node);
  show(trusted.data(), static_cast<unsigned int>(trusted.size()));
}

void AWR8P_Event::awr8p_dump_bin(awrEvtHdr_s* node) {
  const RecordView trusted = mpuevent::awr::trustingLength(node);
  BodyWriter entries(Separator::none);
  mpuevent::awr::writeDump(entries, trusted.bytes(mpuevent::awr::headerSize));
  entries.tellElements();
  appendBodyBytes(entries.view().data(), static_cast<unsigned int>(entries.size()));
}

void AWR8P_Event::show(const void* nodes, unsigned int size) {
  const RecordView payload(nodes, size);
  BodyWriter entries(Separator::none);
  mpuevent::awr::forEachNode(payload, [&](const Node& node) {
    switch (node.type) {
      case NodeType::text:
        writeEntry(entries, "_", payload.text(node.data));
        if (summaryTaken_ == 0) setSummary(toString(payload.text(node.data)));
        summaryTaken_ = 1;
        break;
      case NodeType::binary:
        mpuevent::awr::writeDump(entries, payload.bytes(node.data, node.end - node.data));
        break;
      case NodeType::container:
        break;
      case NodeType::eventName:
        setEventID(toString(payload.text(node.data)));
        break;
    }
  });
  entries.tellElements();
  appendBodyBytes(entries.view().data(), static_cast<unsigned int>(entries.size()));
}

}  // namespace Pegasus
