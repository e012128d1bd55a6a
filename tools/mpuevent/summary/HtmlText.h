#ifndef MPUEVENT_TOOL_SUMMARY_HTMLTEXT_H
#define MPUEVENT_TOOL_SUMMARY_HTMLTEXT_H

#include <string_view>

#include "forms/TextBuffer.h"
#include "summary/SummaryWords.h"

namespace mpuevent::tool {

/// Appends text of at most `width` characters to a page: nothing in it is markup.
inline void appendHtmlText(TextBuffer& to, std::string_view utf8, std::size_t width) {
  for (const char c : fitted(utf8, width)) {
    switch (c) {
      case '&':
        to += "&amp;";
        break;
      case '<':
        to += "&lt;";
        break;
      case '>':
        to += "&gt;";
        break;
      case '"':
        to += "&quot;";
        break;
      default:
        to += c;
    }
  }
}

}  // namespace mpuevent::tool

#endif
