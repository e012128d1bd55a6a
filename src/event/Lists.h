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

/// Entries of one size that stand one behind the other.
struct List {
  std::size_t start;    ///< of the first entry
  std::size_t stride;   ///< from one entry to the next, at least 1
  std::uint64_t count;  ///< of entries; any number, also one that the record claims
};

/// Where a list ends, however much of it is held; at most the end of the bytes held, behind which
/// all reads are empty. It cannot wrap, whatever the record claims.
inline std::size_t endOf(RecordView layout, const List& list) {
  assert(list.stride > 0);
  if (list.start >= layout.size()) return layout.size();
  const std::size_t room = layout.size() - list.start;
  if (list.count > room / list.stride) return layout.size();
  return list.start + list.stride * static_cast<std::size_t>(list.count);
}

/// Calls `visit(entry, index)` for each entry that begins among the bytes held, until it returns
/// false. An entry is a view on its own bytes; the last may be cut. Returns `endOf` the list.
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

/// Writes the rows of each entry; the entries stand one directly behind the other. Returns
/// `endOf` the list.
inline std::size_t writeList(BodyWriter& body, RecordView layout, std::size_t start,
                             std::uint64_t count, const Layout& entry) {
  return forEachEntry(layout, {start, entry.size, count}, [&](RecordView bytes, std::uint32_t) {
    writeFields(body, bytes, entry.rows);
    return true;
  });
}

}  // namespace mpuevent

#endif
