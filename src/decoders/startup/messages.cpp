#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>

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

/// Formats the lines of a start-up message one after another.
class LineWriter {
 public:
  explicit LineWriter(BodyWriter& body) : body_(body) {}

  void line(std::string_view line) {
    if (line.find('=') == std::string_view::npos) {
      if (!line.empty()) textLine(line);
    } else {
      pairs(line);
    }
  }

 private:
  /// "key = value" again and again, with a text behind the last value perhaps.
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

  void pair(std::string_view key, std::string_view value) {
    key = withoutLeading(key);
    while (!key.empty() && isWhiteSpace(key.back())) key.remove_suffix(1);
    key_.assign(key);
    std::replace_if(key_.begin(), key_.end(), isWhiteSpace, '_');
    body_.element(key_, value);
  }

  void textLine(std::string_view text) {
    text = withoutLeading(text);
    // One character of white space at most, unlike behind a key.
    if (!text.empty() && isWhiteSpace(text.back())) text.remove_suffix(1);
    body_.element(textKey_(textNumber_++), text);
  }

  BodyWriter& body_;
  std::string key_;
  NumberedKey textKey_{"Text"};
  std::uint32_t textNumber_ = 1;
};

// The header of a management message on its channel; offsets from where it begins.
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

// A partial message has its first three fields, and of the others, in their order, those whose
// number here is less than what remains of the message.
constexpr std::size_t alwaysThere = 3;
constexpr std::uint32_t neededRests[] = {16, 16, 17, 18, 40, 48, 52, 56};
static_assert(alwaysThere + std::size(neededRests) == std::size(channelHeaderFields));

/// A text, and behind it the header of a management message.
struct TextAndHeader {
  std::string_view text;
  std::size_t headerOffset;

  explicit TextAndHeader(RecordView payload) {
    const std::string_view lines = payload.text(0);
    text = lines.substr(0, lines.find('\n'));
    const std::size_t length = text.size() < lines.size() ? text.size() + 1 : text.size();
    headerOffset = length / 4 * 4;  // down, into the text's end
  }
};

String messageAndHeader(const Record& record, const TextAndHeader& message,
                        std::span<const Field> fields) {
  BodyWriter body(Separator::blank, message.text.size() + 512);
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
  BodyWriter body(Separator::blank, 2 * text.size() + 64);
  LineWriter writer(body);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    writer.line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return body.string();
}

String unknownMessageBody(const Record& record) {
  return messageAndHeader(record, TextAndHeader(record.payload()), channelHeaderFields);
}

String partialMessageBody(const Record& record) {
  const TextAndHeader message(record.payload());
  // 152 is taken off although the payload's length does not count the record's header, and the
  // difference wraps.
  const auto rest =
      static_cast<std::uint32_t>(record.structLength() - Record::headerSize - message.headerOffset);
  const auto* there = std::lower_bound(std::begin(neededRests), std::end(neededRests), rest);
  const auto count = alwaysThere + static_cast<std::size_t>(there - std::begin(neededRests));
  return messageAndHeader(record, message, std::span(channelHeaderFields).first(count));
}

}  // namespace mpuevent::startup
