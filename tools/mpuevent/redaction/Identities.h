#ifndef MPUEVENT_TOOL_IDENTITIES_H
#define MPUEVENT_TOOL_IDENTITIES_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace mpuevent::tool {

// What tells of hosts in a text, by its looks.

/// The 4 or 16 bytes of an IPv4 or IPv6 address.
using AddressBytes = std::string;

/// An address in a text.
struct WrittenAddress {
  std::size_t at;
  std::size_t length;
  AddressBytes address;
  bool isWord;  ///< no letter or digit is beside it
};

using VisitAddress = std::function<void(const WrittenAddress& address)>;
using VisitText = std::function<void(std::string_view text)>;

/// The addresses in the bytes, in their order; `::` and `::1` are none.
void forEachAddress(std::string_view bytes, const VisitAddress& visit);
/// The iSCSI names (`iqn.`, `eui.`, `naa.`) in the bytes.
void forEachIscsiName(std::string_view bytes, const VisitText& visit);

/// The address of a text that is one, or of a word in hex, as "0A140332 (hex)".
std::optional<AddressBytes> parseAddress(std::string_view text);

/// Whether the address may be looked for in bytes: 0.x.x.x and masks are numbers most of the time.
bool isTelling(const AddressBytes& address);

}  // namespace mpuevent::tool

#endif
