#ifndef MPUEVENT_TOOL_EXPLAIN_EXPLAINFORMS_H
#define MPUEVENT_TOOL_EXPLAIN_EXPLAINFORMS_H

#include <span>

#include "explain/Examination.h"
#include "forms/TextBuffer.h"
#include "log/framing/LogReader.h"

namespace mpuevent::tool {

/// A hex dump with a line or more for each run and what it makes beside it; a line that only
/// repeats the one before is "*".
void appendExplainedDump(TextBuffer& to, const log::LogUnit& unit, std::span<const ByteRun> runs);

/// One JSON array with an object a run.
void appendExplainedJson(TextBuffer& to, const log::LogUnit& unit, std::span<const ByteRun> runs);

}  // namespace mpuevent::tool

#endif
