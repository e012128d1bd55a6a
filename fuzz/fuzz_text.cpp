// Arbitrary bytes through the text helpers, compared with the plainest way to get the same.
#include <MPUEvent/QuarnEvent.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.h"
#include "support/DecodedEvent.h"
#include "support/ExpectedText.h"

namespace {

using mpuevent::fuzz::require;
using mpuevent::support::utf8;
using Pegasus::Quarn_Event;

// The expectation is quadratic and recursive.
constexpr std::size_t kLongestText = 4096;
constexpr std::uint32_t kShare = 512;
constexpr std::size_t kShortText = 96;  // longer ones are compared on a share of the inputs

/// Each byte as the UTF-8 of the Latin-1 character of its number.
std::string latin1(std::string_view bytes) {
  std::string out;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    if (value < 0x80) {
      out += byte;
    } else {
      out += static_cast<char>(0xC0 | value >> 6);
      out += static_cast<char>(0x80 | (value & 0x3F));
    }
  }
  return out;
}

/// Bytes become a text as they are if they are UTF-8, else as Latin-1.
bool isTextOf(const Pegasus::String& text, std::string_view bytes) {
  const std::string actual = utf8(text);
  return actual == bytes || actual == latin1(bytes);
}

/// A copy in an allocation of exactly its size, so that a sanitizer sees each overrun.
std::vector<char> exactly(std::string_view bytes) { return {bytes.begin(), bytes.end()}; }

/// The same for a text and its NUL.
std::vector<char> terminated(std::string_view text) {
  std::vector<char> copy(text.size() + 1);
  std::copy(text.begin(), text.end(), copy.begin());
  return copy;
}

void tryHexified(std::string_view bytes) {
  const std::vector<char> source = exactly(bytes);
  const auto count = static_cast<long>(source.size());
  std::vector<char> digits(2 * source.size() + 1, '~');
  require(Quarn_Event::hexified(digits.data(), source.data(), count) == 2 * count,
          "hexified returns two for each byte");
  const std::string expected = mpuevent::support::expectedHex(bytes);
  require(std::equal(digits.begin(), digits.end() - 1, expected.begin()), "hexified digits");
  require(digits.back() == '\0', "hexified ends in NUL");
  require(utf8(Quarn_Event::hexifiedString(source.data(), count)) == expected, "hexifiedString");
}

/// No look at the result but its size: what counts is what the sanitizers see.
void tryMemory(std::string_view text) {
  const std::vector<char> source = terminated(text);
  require(Quarn_Event::makeSafeString(source.data(), static_cast<int>(text.size())).size() <=
              2 * text.size(),
          "two characters for each at most");
}

void trySafeString(std::string_view text) {
  const std::string expected = mpuevent::support::expectedSafeString(text);
  require(expected.size() <= 2 * text.size(), "two characters for each at most");
  if (!text.empty()) {
    const std::vector<char> source = exactly(text);
    require(isTextOf(Quarn_Event::makeSafeString(source.data(), static_cast<int>(source.size())),
                     expected),
            "makeSafeString of a length");
  }
  const std::vector<char> source = terminated(text);
  require(isTextOf(Quarn_Event::makeSafeString(source.data(), 0),
                   mpuevent::support::expectedSafeString(source.data())),
          "makeSafeString to the NUL");
  require(Quarn_Event::makeSafeString(source.data(), -1).size() == 0,
          "makeSafeString of a negative length");
}

void tryElements(std::string_view keyBytes, std::string_view valueBytes) {
  std::vector<char> key = terminated(keyBytes);
  std::vector<char> value = terminated(valueBytes);
  const std::string keyText = key.data();
  const std::string valueText = value.data();
  const auto element = [](const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
  };
  require(isTextOf(Quarn_Event::xmlize(key.data(), value.data()), element(keyText, valueText)),
          "xmlize");
  const Pegasus::String hex =
      Quarn_Event::hexifiedString(valueBytes.data(), static_cast<long>(valueBytes.size()));
  require(isTextOf(Quarn_Event::xmlizeString(key.data(), hex), element(keyText, utf8(hex))),
          "xmlizeString");

  const std::string repairedKey = mpuevent::support::withoutLoneBackslash(keyText);
  const std::string repairedValue = mpuevent::support::withoutLoneBackslash(valueText);
  const std::string number =
      mpuevent::support::withoutLoneBackslash(std::to_string(valueText.size()) + ":" + valueText);
  Pegasus::QuarnEvent event(nullptr, 0);
  char stringFormat[] = "%s";
  event.addEntry(key.data(), stringFormat, value.data());
  require(key.data() == repairedKey, "addEntry repairs the caller's key");
  require(isTextOf(event.getBody(), element(repairedKey, repairedValue)), "addEntry");

  Pegasus::QuarnEvent numbered(nullptr, 0);
  char mixedFormat[] = "%u:%s";
  numbered.addEntry(key.data(), mixedFormat, static_cast<unsigned int>(valueText.size()),
                    value.data());
  require(isTextOf(numbered.getBody(), element(repairedKey, number)), "addEntry of two arguments");
}

}  // namespace

/// The first byte says where the rest divides into a key and a value.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(data, data + std::min(size, kLongestText));
  const std::string_view text = std::string_view(input).substr(input.empty() ? 0 : 1);
  const std::size_t keySize =
      input.empty() ? 0 : text.size() * static_cast<unsigned char>(input[0]) / 255;
  const bool thorough = mpuevent::fuzz::isThorough(input, kShare);
  if (text.size() > kShortText && !thorough) {
    tryMemory(text);
    tryMemory(mpuevent::support::taggedText(text.substr(0, kShortText)));
    return 0;
  }
  // Of the others each is tried on a part of the inputs.
  const std::size_t choice = input.size() % 4;
  if (thorough || choice == 0) tryHexified(text);
  if (thorough || choice == 1) trySafeString(text);
  if (thorough || choice == 2) trySafeString(mpuevent::support::taggedText(text));
  if (thorough || choice == 3) tryElements(text.substr(0, keySize), text.substr(keySize));
  return 0;
}
