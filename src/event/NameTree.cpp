#include "event/NameTree.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace mpuevent {

namespace {

/// How many characters two texts begin with alike.
std::size_t commonLength(const char* one, const char* other, std::size_t most) {
  constexpr std::size_t step = 16;
  std::size_t length = 0;
  while (most - length >= step && std::memcmp(one + length, other + length, step) == 0) {
    length += step;
  }
  while (length < most && one[length] == other[length]) ++length;
  return length;
}

}  // namespace

NameTree::NameTree(std::string_view text) : text_(text) {
  nodes_.reserve(32);
  nodes_.push_back({0, 0});
}

NameTree::Descent NameTree::descend(Descent at, std::string_view characters, Until until) {
  while (at.size < characters.size()) {
    if (at.next == none) {
      at.next = childOf(nodes_[at.node], static_cast<unsigned char>(characters[at.size]));
      if (at.next == none) break;
    }
    const Node& node = nodes_[at.next];
    const std::size_t wanted = std::min<std::size_t>(node.size, characters.size()) - at.size;
    const std::size_t common =
        commonLength(characters.data() + at.size, text_.data() + node.place + at.size, wanted);
    work_ += nodeWork + common;
    at.size += static_cast<Number>(common);
    if (at.size < node.size) break;
    at.node = std::exchange(at.next, none);
    if (node.name == none) continue;
    at.name = node.name;
    if (until == Until::name) break;
  }
  return at;
}

void NameTree::push(Range name) {
  const Descent at = descend({}, text_.substr(name.begin, name.size()), Until::name);
  const auto number = static_cast<Number>(names_.size());
  forget();
  if (at.name != none) return names_.push_back(none);
  Number node = at.next == none ? at.node : divide(at);
  if (at.size < name.size()) {
    node = add(node, {static_cast<Number>(name.begin), static_cast<Number>(name.size())});
  }
  nodes_[node].name = number;
  names_.push_back(node);
}

void NameTree::pop() {
  forget();
  if (names_.back() != none) nodes_[names_.back()].name = none;
  names_.pop_back();
}

void NameTree::forget() {
  known_ = {};
  ++changes_;
}

std::optional<std::size_t> NameTree::lowestAt(std::size_t place) {
  if (place >= text_.size()) return std::nullopt;
  const auto* known = std::find_if(known_.begin(), known_.end(), [place](const Known& one) {
    return place > one.begin && place < one.end;
  });
  const Descent at = descend(known == known_.end() ? Descent() : descendKnown(*known, place),
                             text_.substr(place), Until::end);
  if (at.size >= worthKnowing) {
    auto& [latest, farthest] = known_;
    latest = {place, place + at.size, nodes_[at.next == none ? at.node : at.next].place};
    if (latest.end >= farthest.end) farthest = latest;
  }
  return at.name == none ? std::nullopt : std::optional<std::size_t>(at.name);
}

/// Descends with the characters up to the end of what is known. They stand in a name, too, so that
/// the next place where that name is need not compare them again.
NameTree::Descent NameTree::descendKnown(const Known& known, std::size_t place) {
  const auto same = static_cast<Number>(known.same + (place - known.begin));
  const std::size_t size = known.end - place;
  const std::size_t number = same / 2;
  if (number >= memos_.size()) memos_.resize(2 * number + 1);
  Memo& memo = memos_[number];
  const bool holds =
      memo.change == changes_ && memo.place == same && nodes_[memo.descent.node].size <= size;
  if (!holds) memo = {changes_, same, {}};
  Descent at = memo.descent;
  at.size = std::min(at.size, static_cast<Number>(size));
  if (at.size == nodes_[at.node].size) at.next = none;
  memo.descent = descend(at, text_.substr(place, size), Until::end);
  return memo.descent;
}

NameTree::Number NameTree::childOf(const Node& node, unsigned char first) const {
  if (node.table != none) return tables_[node.table][first];
  Number child = node.child;
  while (child != none && nodes_[child].first != first) child = nodes_[child].sibling;
  return child;
}

/// Adds a child that the parent does not have yet.
NameTree::Number NameTree::add(Number parent, Node child) {
  const auto number = static_cast<Number>(nodes_.size());
  Node& above = nodes_[parent];
  child.first = static_cast<unsigned char>(text_[child.place + above.size]);
  if (above.childCount == mostInList && above.table == none) makeTable(above);
  if (above.table != none) {
    tables_[above.table][child.first] = number;
  } else {
    child.sibling = above.child;
    above.child = number;
    ++above.childCount;
  }
  nodes_.push_back(child);
  return number;
}

void NameTree::makeTable(Node& node) {
  node.table = static_cast<Number>(tables_.size());
  tables_.emplace_back().fill(none);
  for (Number child = node.child; child != none; child = nodes_[child].sibling) {
    tables_.back()[nodes_[child].first] = child;
  }
}

/// Puts a node where the descent ended, between two others. It takes over the number of the one
/// below, by which the one above knows it.
NameTree::Number NameTree::divide(const Descent& at) {
  const auto number = static_cast<Number>(nodes_.size());
  Node below = nodes_[at.next];
  below.first = static_cast<unsigned char>(text_[below.place + at.size]);
  below.sibling = none;
  if (below.name != none) names_[below.name] = number;
  Node& between = nodes_[at.next];
  between.size = static_cast<Number>(at.size);
  between.name = none;
  between.child = number;
  between.childCount = 1;
  between.table = none;
  nodes_.push_back(below);
  return at.next;
}

}  // namespace mpuevent
