#include "support/ExpectedText.h"

#include <algorithm>
#include <array>

namespace mpuevent::support {

namespace {

constexpr std::string_view kLettersAndDigits =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

bool isLetterOrDigit(char character) {
  return kLettersAndDigits.find(character) != std::string_view::npos;
}

std::string escaped(std::string_view text) {
  constexpr std::string_view harmless = " \t\n.:,()-\"/_#'=";
  std::string out;
  for (const char character : text) {
    if (!isLetterOrDigit(character) && harmless.find(character) == std::string_view::npos) {
      out += '\\';
    }
    if (character == '=') {
      out += ": ";
    } else {
      out += character;
    }
  }
  return out;
}

/// The end of the closing tag that starts at `at`, 0 if none does.
std::size_t closingTagEnd(std::string_view text, std::size_t at, std::string_view name) {
  if (text.substr(at, 2) != "</") return 0;
  const std::string_view behind = text.substr(at + 2);
  if (behind.starts_with('>')) return at + 3;
  // Whatever stands behind the name counts as the tag's end.
  return behind.starts_with(name) && behind.size() > name.size() ? at + 3 + name.size() : 0;
}

}  // namespace

std::string expectedHex(std::string_view bytes) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string out;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    out += digits[value / 16];
    out += digits[value % 16];
  }
  return out;
}

std::string expectedSafeString(std::string_view text) {
  std::string out;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t open = text.find('<', at);
    out += escaped(text.substr(at, open - at));
    if (open == std::string_view::npos) break;
    // A name has at least one character: "<>" goes on to the next ">".
    const std::size_t openEnd = text.find('>', std::min(open + 2, text.size()));
    std::size_t close = std::string_view::npos;
    std::size_t closeEnd = 0;
    if (openEnd != std::string_view::npos) {
      const std::string_view name = text.substr(open + 1, openEnd - open - 1);
      for (close = openEnd + 1; close < text.size(); ++close) {
        closeEnd = closingTagEnd(text, close, name);
        if (closeEnd != 0) break;
      }
    }
    if (closeEnd == 0) {
      out += escaped(text.substr(open));
      break;
    }
    out += text.substr(open, openEnd + 1 - open);
    out += expectedSafeString(text.substr(openEnd + 1, close - openEnd - 1));
    out += text.substr(close, closeEnd - close);
    at = closeEnd;
  }
  return out;
}

std::string taggedText(std::string_view bytes) {
  constexpr std::array<std::string_view, 16> pieces = {
      "<a>", "</a>", "<b>", "</b>", "<ab>", "</ab>", "<c/>", "</c",
      "<",   ">",    "/",   "</>",  "=",    "\\",    "a",    "b"};
  // The names of these tags differ, so that many can be open at once.
  constexpr std::string_view names = "defghijklmnopqrs";
  std::string out;
  for (const char byte : bytes.substr(0, 512)) {
    const auto value = static_cast<unsigned char>(byte);
    const char name = names[value % names.size()];
    switch (value / 16) {
      case 14:
        out.append({'<', name, '>'});
        break;
      case 15:
        out.append({'<', '/', name, '>'});
        break;
      default:
        out.append(pieces[value % pieces.size()]);
    }
  }
  return out;
}

std::string withoutLoneBackslash(std::string text) {
  if (text.ends_with('\\') && !text.ends_with("\\\\")) text.back() = '.';
  return text;
}

}  // namespace mpuevent::support
