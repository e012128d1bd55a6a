#include "redaction/Identities.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <initializer_list>

namespace mpuevent::tool {

namespace {

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";

constexpr auto kAddressBytes = [] {
  std::array<bool, 256> in{};
  for (const char c : kHexDigits) in[static_cast<unsigned char>(c)] = true;
  in['.'] = in[':'] = true;
  return in;
}();

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isAddressByte(char c) { return kAddressBytes[static_cast<unsigned char>(c)]; }

std::optional<AddressBytes> parseIpv6(std::string_view text) {
  constexpr std::size_t longest = INET6_ADDRSTRLEN;
  if (text.size() > longest || text == "::" || text == "::1") return std::nullopt;
  AddressBytes address(16, '\0');
  if (::inet_pton(AF_INET6, std::string(text).c_str(), address.data()) != 1) return std::nullopt;
  return address;
}

// The four numbers at the beginning of the text, which may have leading zeros; how long that is.
std::size_t parseIpv4(std::string_view text, AddressBytes& address) {
  address.clear();
  std::size_t at = 0;
  for (;;) {
    unsigned number = 0;
    const std::size_t begin = at;
    for (; at < text.size() && isDigit(text[at]) && at - begin < 3; ++at) {
      number = number * 10 + static_cast<unsigned>(text[at] - '0');
    }
    if (at == begin || number > 255) return 0;
    address += static_cast<char>(static_cast<unsigned char>(number));
    if (address.size() == 4) return at;
    if (at == text.size() || text[at] != '.') return 0;
    ++at;
  }
}

bool isWord(std::string_view bytes, std::size_t at, std::size_t end) {
  const auto joins = [](char c) { return isDigit(c) || isLetter(c); };
  return (at == 0 || !joins(bytes[at - 1])) && (end == bytes.size() || !joins(bytes[end]));
}

// The addresses in [begin, end), which are the bytes that addresses are made of.
void visitRun(std::string_view bytes, std::size_t begin, std::size_t end,
              const VisitAddress& visit) {
  std::string_view run = bytes.substr(begin, end - begin);
  if (std::count(run.begin(), run.end(), ':') >= 2) {
    std::optional<AddressBytes> address = parseIpv6(run);
    if (!address && (run.back() == ':' || run.back() == '.')) {
      run.remove_suffix(1);
      address = parseIpv6(run);
    }
    if (address) {
      visit({begin, run.size(), *address, isWord(bytes, begin, begin + run.size())});
      return;
    }
  }
  AddressBytes address;
  for (std::size_t at = begin; at < end;) {
    const bool inside = at != begin && (isDigit(bytes[at - 1]) || bytes[at - 1] == '.');
    const std::size_t length = inside ? 0 : parseIpv4(bytes.substr(at, end - at), address);
    const std::string_view rest = bytes.substr(at + length);
    const bool goesOn = !rest.empty() && (isDigit(rest[0]) ||
                                          (rest[0] == '.' && rest.size() > 1 && isDigit(rest[1])));
    if (length != 0 && !goesOn) visit({at, length, address, isWord(bytes, at, at + length)});
    at += std::max<std::size_t>(length, 1);
  }
}

}  // namespace

void forEachAddress(std::string_view bytes, const VisitAddress& visit) {
  constexpr std::size_t shortest = 3;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    if (!isAddressByte(bytes[at])) continue;
    const std::size_t begin = at;
    while (at < bytes.size() && isAddressByte(bytes[at])) ++at;
    if (at - begin >= shortest) visitRun(bytes, begin, at, visit);
  }
}

void forEachIscsiName(std::string_view bytes, const VisitText& visit) {
  constexpr std::size_t prefix = 4;
  constexpr std::size_t shortest = prefix + 4;
  const auto isName = [](char c) {
    return isDigit(c) || isLetter(c) || c == '.' || c == ':' || c == '-' || c == '_';
  };
  for (std::size_t dot = bytes.find('.', 3); dot < bytes.size(); dot = bytes.find('.', dot + 1)) {
    std::string kind(bytes.substr(dot - 3, 3));
    for (char& c : kind) c = isLetter(c) ? static_cast<char>(c | 0x20) : c;
    if (kind != "iqn" && kind != "eui" && kind != "naa") continue;
    std::size_t end = dot;
    while (end < bytes.size() && isName(bytes[end])) ++end;
    while (bytes[end - 1] == '.' || bytes[end - 1] == ':') --end;
    const std::string_view name = bytes.substr(dot - 3, end - (dot - 3));
    const std::string_view digits = kind == "iqn" ? kDigits : kHexDigits;
    if (name.size() >= shortest &&
        name.substr(prefix, 4).find_first_not_of(digits) == std::string_view::npos) {
      visit(name);
    }
    dot = end;
  }
}

std::optional<AddressBytes> parseAddress(std::string_view text) {
  constexpr std::string_view hexMark = " (hex)";
  AddressBytes address;
  if (!text.empty() && parseIpv4(text, address) == text.size()) return address;
  if (text.size() != 8 + hexMark.size() || !text.ends_with(hexMark)) return parseIpv6(text);
  std::uint32_t word = 0;
  if (std::from_chars(text.data(), text.data() + 8, word, 16).ptr != text.data() + 8) {
    return std::nullopt;
  }
  address.clear();
  for (const int shift : {24, 16, 8, 0}) {
    address += static_cast<char>(static_cast<unsigned char>(word >> shift));
  }
  return address;
}

bool isTelling(const AddressBytes& address) {
  const auto isByte = [&address](std::size_t at, unsigned char byte) {
    return static_cast<unsigned char>(address[at]) == byte;
  };
  return address.size() == 16 || !(isByte(0, 0) || (isByte(0, 0xFF) && isByte(1, 0xFF)));
}

}  // namespace mpuevent::tool
