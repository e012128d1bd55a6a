#ifndef MPUEVENT_TOOL_SUMMARY_HTMLCHARTS_H
#define MPUEVENT_TOOL_SUMMARY_HTMLCHARTS_H

#include "forms/TextBuffer.h"
#include "summary/Summary.h"

namespace mpuevent::tool {

// Pictures for a page. Their lengths and widths stretch with it, so texts stand beside them.

/// A controller's lanes, one above another, and where ids are missing. `highest` is what fills a
/// lane; one of a severity that has none is left out.
void appendLanes(TextBuffer& to, const TimeLanes& lanes,
                 const std::array<std::uint64_t, 4>& highest);

/// Where in a file damage and padding are.
void appendDamageStrip(TextBuffer& to, const FileSummary& file);

}  // namespace mpuevent::tool

#endif
