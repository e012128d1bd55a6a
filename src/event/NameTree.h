#ifndef EVENT_NAMETREE_H
#define EVENT_NAMETREE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "event/TagFinder.h"

namespace mpuevent {

/// A stack of names that stand in a text, and which of them stands at a place of it.
///
/// A tree whose nodes are beginnings of names, each of which begins with that of its parent. Of two
/// names of the stack of which one begins with the other, the longer one counts only if it is the
/// lower. So where several stand at a place, the longest of those that count is the lowest.
class NameTree {
 public:
  /// The text must outlive the tree.
  explicit NameTree(std::string_view text);

  void push(Range name);
  void pop();

  /// The lowest name of the stack that stands at `place`.
  std::optional<std::size_t> lowestAt(std::size_t place);

  /// What has been done, in characters compared. If no name holds a "</", and names and the places
  /// looked at do not lie inside one another, that is less than `mostWork` for each character.
  std::size_t work() const { return work_; }
  static constexpr std::size_t mostWork = 66;

 private:
  using Number = std::uint32_t;
  static constexpr Number none = 0xFFFFFFFF;
  static constexpr std::size_t nodeWork = 32;
  static constexpr unsigned char mostInList = 8;
  static constexpr std::size_t worthKnowing = 64;

  struct Node {
    Number place;         ///< where the text has the beginning that the node stands for
    Number size;          ///< of that beginning
    Number name = none;   ///< the lowest of the stack that is just this, if it counts
    Number child = none;  ///< the first of them
    Number table = none;  ///< of the children, if there are many
    Number sibling = none;
    unsigned char first = 0;  ///< the character behind the parent's beginning
    unsigned char childCount = 0;
  };
  using Table = std::array<Number, 256>;

  /// How far down the tree a text goes. What goes further can go on from there.
  struct Descent {
    Number node = 0;     ///< the last that it begins with
    Number next = none;  ///< the node below that it goes on to, but does not reach
    Number size = 0;     ///< how many characters the tree has
    Number name = none;  ///< the longest on the way that counts
  };

  /// Characters that were compared with those of a name. Places among them are looked at, too,
  /// where names hold a "</": what is there need not be compared again wherever the name stands
  /// again.
  struct Known {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t same = 0;  ///< where in the name the characters from `begin` to `end` stand
  };
  /// How far down the tree it went from a place in a name. Holds until a name is pushed or popped.
  struct Memo {
    Number change = none;
    Number place = none;
    Descent descent;
  };

  enum class Until : bool { end, name };

  void forget();
  Descent descend(Descent at, std::string_view characters, Until until);
  Descent descendKnown(const Known& known, std::size_t place);
  Number childOf(const Node& node, unsigned char first) const;
  Number add(Number parent, Node child);
  Number divide(const Descent& at);
  void makeTable(Node& node);

  std::string_view text_;
  std::vector<Node> nodes_;
  std::vector<Table> tables_;
  std::vector<Number> names_;  ///< for each name: its node, or none if it does not count
  std::size_t work_ = 0;
  Number changes_ = 0;          ///< how often names were pushed or popped
  std::array<Known, 2> known_;  ///< the latest, and that which ends last
  std::vector<Memo> memos_;     ///< by half of their place: a "</" takes two
};

}  // namespace mpuevent

#endif
