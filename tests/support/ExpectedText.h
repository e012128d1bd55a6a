#ifndef MPUEVENT_SUPPORT_EXPECTEDTEXT_H
#define MPUEVENT_SUPPORT_EXPECTEDTEXT_H

#include <string>
#include <string_view>

/// What the text helpers must give, worked out in the plainest way, however slow.
namespace mpuevent::support {

std::string expectedHex(std::string_view bytes);

/// `makeSafeString`, bytes out: scans for an element, and recurses into its content.
std::string expectedSafeString(std::string_view text);

/// Text full of tags, one piece for each byte: arbitrary bytes seldom are.
std::string taggedText(std::string_view bytes);

/// A key or value whose lone backslash at the end became a period.
std::string withoutLoneBackslash(std::string text);

}  // namespace mpuevent::support

#endif
