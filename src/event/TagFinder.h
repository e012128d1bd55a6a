#ifndef EVENT_TAGFINDER_H
#define EVENT_TAGFINDER_H

#include <cstddef>
#include <string_view>

#include "event/ShortVector.h"

namespace mpuevent {

/// A part of a text: from `begin` up to `end`.
struct Range {
  std::size_t begin;
  std::size_t end;

  std::size_t size() const { return end - begin; }
};

/// Where the next "</" stands at or behind `from`; `npos` if there is none. A text full of "<"
/// takes no longer.
std::size_t findClosingMark(std::string_view text, std::size_t from = 0);

/// Without a closing tag there is no element.
inline bool mayHaveTags(std::string_view text) {
  return findClosingMark(text) != std::string_view::npos;
}

/// Finds the opening and closing tags of all elements of a text, in its order. `tags` is empty
/// before.
///
/// An element ends at the first closing tag behind its opening tag that has its name, whatever
/// lies between; elements inside it are then looked for in what lies between. A tag without an
/// element is none. Takes n log n time for any text, without recursion.
using Tags = ShortVector<Range, 32>;
void findTags(std::string_view text, Tags& tags);

}  // namespace mpuevent

#endif
