#ifndef MPUEVENT_TOOL_SUMMARY_SUMMARYFORMS_H
#define MPUEVENT_TOOL_SUMMARY_SUMMARYFORMS_H

#include "choosing/ChoosingOptions.h"
#include "forms/TextBuffer.h"
#include "summary/Summary.h"

namespace mpuevent::tool {

/// Times are shown as dates if the options tell what they count from.
void appendSummaryText(TextBuffer& to, const Summary& summary, const ChoosingOptions& choosing);
/// A page of less than 200 KB that needs no other file and no network, and runs nothing.
void appendSummaryHtml(TextBuffer& to, const Summary& summary, const ChoosingOptions& choosing);
/// One JSON object.
void appendSummaryJson(TextBuffer& to, const Summary& summary);

}  // namespace mpuevent::tool

#endif
