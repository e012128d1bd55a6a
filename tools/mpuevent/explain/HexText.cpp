#include "explain/HexText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

namespace mpuevent::tool {

namespace {

constexpr std::string_view kBlanks = " \t\r\f\v";
constexpr std::size_t kShortestOffset = 4;  // digits
constexpr std::size_t kLongestOffset = 16;
constexpr std::size_t kOctalOffset = 7;  // of od; hexdump's hexadecimal ones may be as long
constexpr std::size_t kOctalWord = 6;    // digits

/// A line of a dump, or of digits without offsets.
struct Row {
  std::size_t line = 0;  // in the text, from 1
  std::string_view offset;
  std::vector<unsigned char> bytes;
  bool repeats = false;  // stands for as many copies of the row before as there is room for
};

bool isHex(std::string_view word) {
  return !word.empty() &&
         word.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

bool isOctal(std::string_view word) {
  return word.find_first_not_of("01234567") == std::string_view::npos;
}

std::uint64_t numberOf(std::string_view digits, int base) {
  std::uint64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  return number;
}

std::string_view trimmed(std::string_view line) {
  const std::size_t begin = line.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin);
}

std::string_view unquoted(std::string_view line) {
  line = trimmed(line);
  while (line.starts_with('>') || line.starts_with("| ")) line = trimmed(line.substr(1));
  return line;
}

std::string_view takeWord(std::string_view& line) {
  const std::size_t end = std::min(line.find_first_of(kBlanks), line.size());
  const std::string_view word = line.substr(0, end);
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks, end), line.size()));
  return word;
}

void appendDigits(std::string_view digits, std::vector<unsigned char>& to) {
  for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
    to.push_back(static_cast<unsigned char>(numberOf(digits.substr(at, 2), 16)));
  }
}

// The digits of a line that is nothing but bytes, however they are set apart; none if it has
// others.
std::optional<std::string> plainDigits(std::string_view line) {
  std::string digits;
  for (std::size_t at = 0; at < line.size();) {
    const bool prefixed =
        line.substr(at, 2) == "0x" || line.substr(at, 2) == "0X" || line.substr(at, 2) == "\\x";
    if (prefixed) at += 2;
    const std::size_t end = std::min(line.find_first_of(" \t\r\f\v,:;-{}[]\"'\\", at), line.size());
    const std::string_view word = line.substr(at, end - at);
    if (!word.empty() || prefixed) {
      // "0x5" is a byte; elsewhere half a byte is a mistake.
      if (!isHex(word) || (word.size() % 2 != 0 && !(prefixed && word.size() == 1))) {
        return std::nullopt;
      }
      if (word.size() == 1) digits += '0';
      digits += word;
    }
    at = end < line.size() && line[end] == '\\' && line.substr(end, 2) == "\\x" ? end : end + 1;
  }
  if (digits.empty()) return std::nullopt;
  return digits;
}

// The words behind an offset, up to the column of characters.
std::vector<std::string_view> dumpWords(std::string_view line, bool colon) {
  std::size_t end = line.size();
  for (const std::string_view mark : {"  |", "  >", " |"}) end = std::min(end, line.find(mark));
  if (colon) end = std::min(end, line.find("  "));
  line = trimmed(line.substr(0, end));
  std::vector<std::string_view> words;
  while (!line.empty()) {
    const std::string_view word = takeWord(line);
    if (!isHex(word) || (!words.empty() && word.size() > words.front().size())) break;
    words.push_back(word);
  }
  return words;
}

// Words of more than a byte are numbers of the machine that wrote the dump, but for xxd's.
void appendWord(std::string_view word, bool swapped, bool octal, Row& row) {
  const std::size_t begin = row.bytes.size();
  if (octal) {
    const std::uint64_t number = numberOf(word, 8);
    row.bytes.push_back(static_cast<unsigned char>(number >> 8 & 0xFF));
    row.bytes.push_back(static_cast<unsigned char>(number & 0xFF));
  } else {
    appendDigits(word, row.bytes);
  }
  if (swapped)
    std::reverse(row.bytes.begin() + static_cast<std::ptrdiff_t>(begin), row.bytes.end());
}

// A line that begins with an offset, if it is one. An offset that stands alone tells where the last
// byte of a dump was; it has as many digits as the others, `known`.
std::optional<Row> dumpRow(std::string_view line, std::size_t known) {
  Row row;
  std::string_view rest = line;
  std::string_view offset = takeWord(rest);
  const bool colon = offset.ends_with(':');
  if (colon) offset.remove_suffix(1);
  if (!isHex(offset) || offset.size() < kShortestOffset || offset.size() > kLongestOffset) {
    return std::nullopt;
  }
  row.offset = offset;
  if (rest.empty() && offset.size() == known) return row;
  const std::vector<std::string_view> words = dumpWords(rest, colon);
  if (words.empty()) return std::nullopt;
  const std::size_t width = words.front().size();
  const bool octal = !colon && width == kOctalWord && offset.size() == kOctalOffset &&
                     std::all_of(words.begin(), words.end(), isOctal);
  // Rows of digits without offsets have words of one size.
  if ((width % 2 != 0) || (!colon && !octal && width == offset.size())) return std::nullopt;
  for (const std::string_view word : words) {
    if (word.size() % 2 != 0) return std::nullopt;
    appendWord(word, !colon && width > 2, octal, row);
  }
  return row;
}

class Reader {
 public:
  HexText read(std::string_view text) {
    for (std::size_t line = 1; !text.empty(); ++line) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      readLine(unquoted(text.substr(0, end)), line);
      text.remove_prefix(std::min(end + 1, text.size()));
      if (!error_.empty()) return {{}, error_};
    }
    return join();
  }

 private:
  void readLine(std::string_view line, std::size_t number) {
    // Headings of explain's own dump stand between its parts.
    if (line.empty() || line.ends_with(" bytes:")) return;
    Row row;
    if (line == "*" && !rows_.empty()) {
      row.repeats = true;
    } else if (auto dump =
                   rows_.empty() || offsetSize_ != 0 ? dumpRow(line, offsetSize_) : std::nullopt) {
      row = std::move(*dump);
      offsetSize_ = row.offset.size();
    } else if (const auto digits = plainDigits(line)) {
      appendDigits(*digits, row.bytes);
    } else {
      if (unreadable_ == 0 && !rows_.empty()) unreadable_ = number;
      return;
    }
    row.line = number;
    if (unreadable_ != 0) {
      error_ = "line " + std::to_string(unreadable_) + " is no hex";
      return;
    }
    rows_.push_back(std::move(row));
  }

  // How many rows are as long as the next one's offset says.
  std::size_t agreement(int base) const {
    std::size_t count = 0;
    for (std::size_t i = 0; i + 1 < rows_.size(); ++i) {
      count += !rows_[i].offset.empty() && !rows_[i + 1].offset.empty() &&
                       numberOf(rows_[i].offset, base) + rows_[i].bytes.size() ==
                           numberOf(rows_[i + 1].offset, base)
                   ? 1U
                   : 0U;
    }
    return count;
  }

  // Makes the bytes end at `offset`, with copies of `repeated` if there is one.
  bool goTo(std::uint64_t offset, const Row* repeated, const Row* last) {
    if (offset > kMostBytes) return false;
    while (repeated != nullptr && !repeated->bytes.empty() && bytes_.size() < offset) {
      bytes_.insert(bytes_.end(), repeated->bytes.begin(), repeated->bytes.end());
    }
    // What looks like digits in the column of characters is none, nor is the NUL that fills up a
    // last word.
    if (last != nullptr && offset < bytes_.size() && bytes_.size() - offset < last->bytes.size()) {
      bytes_.resize(static_cast<std::size_t>(offset));
    }
    return offset == bytes_.size();
  }

  HexText join() {
    if (rows_.empty()) return {{}, "there are no hex digits"};
    const bool octal = offsetSize_ == kOctalOffset && agreement(8) > agreement(16);
    const int base = octal ? 8 : 16;
    const std::uint64_t first = numberOf(rows_.front().offset, base);
    const Row* last = nullptr;
    bool repeats = false;
    for (const Row& row : rows_) {
      if (!row.repeats) {
        if (!row.offset.empty() &&
            !goTo(numberOf(row.offset, base) - first, repeats ? last : nullptr, last)) {
          return {{}, "line " + std::to_string(row.line) + ": a line before it is missing"};
        }
        bytes_.insert(bytes_.end(), row.bytes.begin(), row.bytes.end());
        last = &row;
      }
      repeats = row.repeats;
    }
    return {std::move(bytes_), {}};
  }

  static constexpr std::uint64_t kMostBytes = std::uint64_t{64} << 20;

  std::vector<Row> rows_;
  std::size_t offsetSize_ = 0;  // digits of an offset; 0 if the rows have none
  std::size_t unreadable_ = 0;  // the first line that is no hex, behind one that is
  std::string error_;
  std::vector<unsigned char> bytes_;
};

}  // namespace

HexText readHexText(std::string_view text) { return Reader().read(text); }

}  // namespace mpuevent::tool
