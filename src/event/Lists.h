#ifndef EVENT_LISTS_H
#define EVENT_LISTS_H

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/RecordView.h"

namespace mpuevent {

/// A list in a record: entries of one size that stand one behind the other.
struct List {
  std::size_t start;    ///< of the first entry
  std::size_t stride;   ///< from one entry to the next, at least 1
  std::uint64_t count;  ///< of entries; may be whatever the record claims
};

/// The offset behind a list's last entry, or the end of the bytes held if the list claims to reach
/// beyond it. What is read from there on is empty, like everything behind the bytes held. The
/// offset cannot wrap, whatever the record claims.
inline std::size_t endOf(RecordView layout, const List& list) {
  assert(list.stride > 0);
  if (list.start >= layout.size()) return layout.size();
  const std::size_t room = layout.size() - list.start;
  if (list.count > room / list.stride) return layout.size();
  return list.start + list.stride * static_cast<std::size_t>(list.count);
}

/// Calls `visit(entry, index)` for each entry that begins among the bytes held, until it returns
/// false. `entry` is a view on the entry's own bytes, of which the last entry may lack some.
/// Returns where the whole list ends, as `endOf` tells.
template <class Visit>
std::size_t forEachEntry(RecordView layout, const List& list, Visit visit) {
  const std::size_t end = endOf(layout, list);
  std::size_t at = list.start;
  for (std::uint32_t index = 0; index < list.count && at < layout.size(); ++index) {
    if (!visit(layout.from(at, list.stride), index)) break;
    at += std::min(list.stride, layout.size() - at);
  }
  return end;
}

/// Calls `visit(at, index)` with the offset of each entry whose bytes are all held.
template <class Visit>
void forEachWholeEntry(RecordView layout, const List& list, Visit visit) {
  assert(list.stride > 0);
  if (list.start >= layout.size()) return;
  const std::size_t held = (layout.size() - list.start) / list.stride;
  const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(list.count, held));
  for (std::uint32_t index = 0; index < count; ++index) {
    visit(list.start + index * list.stride, index);
  }
}

/// Writes the rows of each entry of a list. The stride is the size of an entry's layout. Returns
/// where the whole list ends, as `endOf` tells.
inline std::size_t writeList(BodyWriter& body, RecordView layout, std::size_t start,
                             std::uint64_t count, const Layout& entry) {
  return forEachEntry(layout, {start, entry.size, count}, [&](RecordView bytes, std::uint32_t) {
    writeFields(body, bytes, entry.rows);
    return true;
  });
}

}  // namespace mpuevent

#endif
