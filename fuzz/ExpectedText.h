#ifndef MPUEVENT_FUZZ_EXPECTEDTEXT_H
#define MPUEVENT_FUZZ_EXPECTEDTEXT_H

#include <string>
#include <string_view>

/// What the text helpers must give, worked out in the plainest way, however slow.
namespace mpuevent::fuzz {

std::string expectedHex(std::string_view bytes);

/// The buffer that `makeSafeKeyname` leaves of `text`, a NUL and all behind it included.
std::string expectedKeyname(std::string_view text, int length);

/// `makeSafeString`, bytes out: scans for an element, and recurses into its content.
std::string expectedSafeString(std::string_view text);

/// A key or value whose lone backslash at the end became a period.
std::string withoutLoneBackslash(std::string text);

}  // namespace mpuevent::fuzz

#endif
