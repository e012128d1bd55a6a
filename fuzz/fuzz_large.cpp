// Records and texts of up to 64 KiB, the input repeated until they are as long: all that is checked
// of a share of the ordinary inputs, and time above all.
#include <MPUEvent/QuarnEvent.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "EventProperties.h"
#include "FuzzTarget.h"
#include "support/DecodedEvent.h"
#include "support/ExpectedText.h"

namespace {

using mpuevent::fuzz::Decode;
using mpuevent::fuzz::require;
using mpuevent::support::utf8;
using Pegasus::Quarn_Event;

constexpr std::size_t kLongestPayload = 65383;

/// Whether `safe` is `text` with backslashes before some characters and each "=" as ": ".
bool isSafeFormOf(std::string_view safe, std::string_view text) {
  const auto backslashes = [](std::string_view at) {
    return std::min(at.find_first_not_of('\\'), at.size());
  };
  while (!text.empty()) {
    if (const std::size_t count = backslashes(text); count != 0) {
      // In a tag they stay, else each has another, and what follows may have one, too.
      const std::size_t shown = backslashes(safe);
      if (shown != count && shown / 2 != count) return false;
      safe.remove_prefix(shown == count ? count : 2 * count);
      text.remove_prefix(count);
      continue;
    }
    if (safe.starts_with('\\')) safe.remove_prefix(1);
    const std::string_view shown =
        text.front() == '=' && safe.starts_with(':') ? ": " : text.substr(0, 1);
    if (!safe.starts_with(shown)) return false;
    safe.remove_prefix(shown.size());
    text.remove_prefix(1);
  }
  return safe.empty();
}

/// Open tags of distinct lengths that begin alike, as far as half the size, then the bytes as a
/// text full of tags again and again: names nest, and closing tags miss many.
std::string longText(std::string_view bytes, std::size_t size) {
  const std::string piece = mpuevent::support::taggedText(bytes.substr(0, 64));
  const bool manyLengths = !bytes.empty() && bytes.front() % 2 != 0;
  std::string text;
  for (std::size_t length = 1; manyLengths && text.size() < size / 2; ++length) {
    text += '<' + std::string(length, 'a') + "b>";
  }
  while (text.size() + piece.size() <= size && !piece.empty()) text += piece;
  return text;
}

void tryText(std::string_view bytes, std::size_t size) {
  const std::string text = longText(bytes, size);
  const std::string safe =
      utf8(Quarn_Event::makeSafeString(text.data(), static_cast<int>(text.size())));
  require(text.empty() || isSafeFormOf(safe, text), "makeSafeString of a long text");
  std::vector<char> value(text.begin(), text.end());
  value.push_back('\0');
  Pegasus::QuarnEvent event(nullptr, 0);
  char key[] = "Key";
  char format[] = "%s";
  event.addEntry(key, format, value.data());
  require(
      utf8(event.getBody()) == "<Key>" + mpuevent::support::withoutLoneBackslash(text) + "</Key>",
      "addEntry of a long text");
  mpuevent::fuzz::inLinearTime(size, [bytes](std::size_t part) {
    return [part = longText(bytes, part)] {
      Quarn_Event::makeSafeString(part.data(), static_cast<int>(part.size()));
    };
  });
}

void tryRecord(const mpuevent::samples::Module& module, std::string_view input, std::size_t size) {
  mpuevent::fuzz::decodeAs(module, mpuevent::fuzz::recordOf(module, input, size),
                           mpuevent::fuzz::requireThoroughly);
  mpuevent::fuzz::inLinearTime(size, [&](std::size_t part) {
    return [&module, record = mpuevent::fuzz::recordOf(module, input, part)] {
      mpuevent::fuzz::decodeAs(module, record, [](std::string_view bytes, const Decode& decode) {
        mpuevent::fuzz::show(bytes, decode);
      });
    };
  });
}

}  // namespace

/// The input: which module, or a text if there is none of the number; the size in 256 bytes; what
/// `recordOf` reads, or the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string_view rest(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::size_t wanted =
      std::min<std::size_t>(256 * (data[1] + std::size_t{1}), kLongestPayload);
  const auto& modules = mpuevent::samples::modules();
  if (const std::size_t number = data[0] % (modules.size() + 4); number < modules.size()) {
    tryRecord(modules[number], rest, wanted);
  } else {
    tryText(rest, wanted);
  }
  return 0;
}
