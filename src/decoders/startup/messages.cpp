#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "decoders/startup/bodies.h"
#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/NumberedKey.h"

namespace mpuevent::startup {

using Pegasus::String;

namespace {

constexpr bool isWhiteSpace(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view withoutLeading(std::string_view text) {
  return {std::find_if_not(text.begin(), text.end(), isWhiteSpace), text.end()};
}

/// Writes the lines of a start-up message one after another. It counts the texts of all of them, so
/// one writer serves a whole message.
class LineWriter {
 public:
  explicit LineWriter(BodyWriter& body) : body_(body) {}

  /// Writes a line without its line feed: as pairs if it holds a '=', else as one text. An empty
  /// line writes nothing.
  void line(std::string_view line) {
    if (line.find('=') == std::string_view::npos) {
      if (!line.empty()) textLine(line);
    } else {
      pairs(line);
    }
  }

 private:
  /// Writes "key = value" pairs as one group, and as a text what stands behind the last value.
  /// `rest` holds a '=' whenever the loop begins anew.
  void pairs(std::string_view rest) {
    body_.openGroup("Values");
    std::size_t equals = rest.find('=');
    do {
      const std::string_view value = withoutLeading(rest.substr(equals + 1));
      const std::size_t end = std::min(value.find_first_of(", "), value.size());
      pair(rest.substr(0, equals), value.substr(0, end));
      rest = value.substr(std::min(end + 1, value.size()));
      equals = rest.find('=');
    } while (equals != std::string_view::npos);
    body_.closeGroup("Values");
    if (!rest.empty()) textLine(rest);
  }

  /// Writes one pair. Blanks inside the key would break its tags: they become underscores.
  void pair(std::string_view key, std::string_view value) {
    key = withoutLeading(key);
    while (!key.empty() && isWhiteSpace(key.back())) key.remove_suffix(1);
    key_.cut(0);
    char* const end =
        std::replace_copy_if(key.begin(), key.end(), key_.reserve(key.size()), isWhiteSpace, '_');
    key_.endAt(end);
    body_.note(key);
    body_.element(key_.view(), value);
  }

  /// Writes the next numbered text.
  void textLine(std::string_view text) {
    text = withoutLeading(text);
    // Of a text the output keeps a second trailing blank; behind a key all of them go.
    if (!text.empty() && isWhiteSpace(text.back())) text.remove_suffix(1);
    body_.element(textKey_(textNumber_++), text);
  }

  BodyWriter& body_;
  LineBuffer key_{Separator::none};
  NumberedKey textKey_{"Text"};
  std::uint32_t textNumber_ = 1;
};

// The header of a management message on its channel. Offsets count from where it begins.
constexpr Field channelHeaderFields[] = {
    {"Message_type",   8,  Width::u8,  Format::dec      },
    {"MMCH_version",   9,  Width::u8,  Format::dec      },
    {"Message_length", 10, Width::u16, Format::dec      },
    {"protocol",       12, Width::u8,  Format::dec      },
    {"type",           12, Width::u24, Format::dec      },
    {"requestor",      16, Width::u8,  Format::dec      },
    {"mmsg_cont",      17, Width::u8,  Format::hexLower2},
    {"return_code",    36, Width::u32, Format::dec      },
    {"general_use1",   44, Width::u32, Format::hexLower8},
    {"general_use2",   48, Width::u32, Format::hexLower8},
    {"general_use3",   52, Width::u32, Format::hexLower8},
};

// A partial message always shows the first three fields. Each field behind them is shown if more
// of the message remains than the number that stands here for it.
constexpr std::size_t alwaysThere = 3;
constexpr std::uint32_t neededRests[] = {16, 16, 17, 18, 40, 48, 52, 56};
static_assert(alwaysThere + std::size(neededRests) == std::size(channelHeaderFields));

/// Where the text of a message ends, and where the header of a management message stands behind it.
struct TextAndHeader {
  std::string_view text;
  std::size_t headerOffset;

  explicit TextAndHeader(RecordView payload) {
    const std::string_view lines = payload.text(0);
    text = lines.substr(0, lines.find('\n'));
    const std::size_t length = text.size() < lines.size() ? text.size() + 1 : text.size();
    headerOffset = length / 4 * 4;  // rounded down, so that it may begin in the text's last bytes
  }
};

String messageAndHeader(const Record& record, const TextAndHeader& message, Fields fields) {
  BodyBuffer body;
  body.element("Text", message.text);
  body.openGroup("MMCH_contents");
  writeFields(body, record.payload().from(message.headerOffset), fields);
  body.closeGroup("MMCH_contents");
  return body.string();
}

}  // namespace

std::string_view messageText(const Record& record) {
  return record.payload().text(0, record.structLength());
}

String messageBody(const Record& record) {
  std::string_view text = messageText(record);
  BodyBuffer body;
  LineWriter writer(body);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    writer.line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return body.string();
}

String unknownMessageBody(const Record& record) {
  return messageAndHeader(record, TextAndHeader(record.payload()), packed<channelHeaderFields>);
}

String partialMessageBody(const Record& record) {
  const TextAndHeader message(record.payload());
  // The size of the record's header is taken off although the payload's length does not count it.
  // The difference wraps for a short payload, which then shows every field that is held.
  const auto rest =
      static_cast<std::uint32_t>(record.structLength() - Record::headerSize - message.headerOffset);
  const auto* there = std::lower_bound(std::begin(neededRests), std::end(neededRests), rest);
  const auto count = alwaysThere + static_cast<std::size_t>(there - std::begin(neededRests));
  return messageAndHeader(record, message, std::span(packed<channelHeaderFields>).first(count));
}

}  // namespace mpuevent::startup
