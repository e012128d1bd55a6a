#include "store/PostgresqlText.h"

#include <algorithm>
#include <array>
#include <utility>

#include "forms/Numbers.h"

namespace mpuevent::tool {

namespace {

constexpr std::string_view kNulShown = "\u2400";

std::string_view asText(std::span<const unsigned char> bytes) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): any bytes may be read as char.
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Of a tsvector.
constexpr std::size_t kLongestWord = 2046;
constexpr std::size_t kMostPlaces = 255;  // of one word
constexpr std::size_t kLastPlace = 16383;

// What a byte of a word is in lower case; 0 for those between words.
constexpr auto kOfWord = [] {
  std::array<unsigned char, 256> lower{};
  for (unsigned byte = 0; byte < lower.size(); ++byte) {
    const bool upper = byte >= 'A' && byte <= 'Z';
    const bool kept = (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte >= 0x80;
    if (upper || kept) lower[byte] = static_cast<unsigned char>(upper ? byte + 0x20 : byte);
  }
  return lower;
}();

}  // namespace

void CopyText::begin() {
  using namespace std::string_view_literals;
  to_ += "PGCOPY\n\377\r\n\0"sv;
  integer(0, 4);
  integer(0, 4);
}

void CopyText::end() { integer(0xFFFF, 2); }

void CopyText::operator()(std::uint64_t number) {
  integer(sizeof number, 4);
  integer(number, sizeof number);
}

void CopyText::operator()(std::span<const unsigned char> bytes) {
  integer(bytes.size(), 4);
  to_ += asText(bytes);
}

void CopyText::operator()(std::string_view text) {
  text = withoutNul(text);
  integer(text.size(), 4);
  to_ += text;
}

void CopyText::json(std::string_view text) { (*this)(withoutEscapedNul(text)); }

void CopyText::integer(std::uint64_t number, unsigned bytes) {
  char* place = to_.reserve(sizeof number);
  while (bytes-- > 0) *place++ = static_cast<char>(number >> (8 * bytes) & 0xFF);
  to_.advanceTo(place);
}

std::string_view CopyText::withoutNul(std::string_view text) {
  if (text.find('\0') == std::string_view::npos) return text;
  room_.clear();
  for (const char c : text) {
    if (c == '\0') {
      room_ += kNulShown;
    } else {
      room_ += c;
    }
  }
  return room_;
}

std::string_view CopyText::withoutEscapedNul(std::string_view json) {
  constexpr std::string_view nul = "\\u0000";
  if (json.find(nul) == std::string_view::npos) return json;
  room_.clear();
  while (!json.empty()) {
    const bool isNul = json.starts_with(nul);
    // A backslash that is escaped begins no other escape.
    const std::size_t length = isNul ? nul.size() : json[0] == '\\' ? 2 : 1;
    room_ += isNul ? kNulShown : json.substr(0, length);
    json.remove_prefix(length);
  }
  return room_;
}

// The server takes longer to find words than to store all else of a row. These are the words that
// SQLite finds, too: runs of letters and digits.
void CopyText::words(std::span<const std::string_view> texts) {
  findWords(texts);
  TextBuffer lexemes;
  std::swap(lexemes, to_);
  std::size_t count = 0;
  for (std::size_t at = 0; at < words_.size(); ++count) {
    const std::string_view text = words_[at].text;
    std::size_t end = at;
    while (end < words_.size() && words_[end].text == text) ++end;
    const std::size_t places = std::min(end - at, kMostPlaces);
    to_ += text;
    to_ += '\0';
    integer(places, 2);
    for (std::size_t place = at; place < at + places; ++place) {
      integer(std::min(words_[place].place, kLastPlace), 2);
    }
    at = end;
  }
  std::swap(lexemes, to_);
  integer(sizeof(std::uint32_t) + lexemes.size(), 4);
  integer(count, 4);
  to_ += lexemes.view();
}

// In lower case and sorted.
void CopyText::findWords(std::span<const std::string_view> texts) {
  room_.clear();
  for (const std::string_view text : texts) room_.append(text).append(1, ' ');
  words_.clear();
  unsigned char before = 0;
  std::size_t begin = 0;
  for (std::size_t at = 0; at < room_.size(); ++at) {
    const auto byte = static_cast<unsigned char>(room_[at]);
    if (const unsigned char lower = kOfWord[byte]; lower != 0) {
      const bool upperLatin1 = before == 0xC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97;
      room_[at] = static_cast<char>(upperLatin1 ? byte + 0x20 : lower);
    } else {
      if (at > begin && at - begin <= kLongestWord) addWord(begin, at);
      begin = at + 1;
    }
    before = byte;
  }
  std::sort(words_.begin(), words_.end());
}

void CopyText::addWord(std::size_t begin, std::size_t end) {
  Word word{0, std::string_view(room_).substr(begin, end - begin), words_.size() + 1};
  for (std::size_t at = 0; at < sizeof word.beginning; ++at) {
    const bool there = at < word.text.size();
    word.beginning = word.beginning << 8 | (there ? static_cast<unsigned char>(word.text[at]) : 0U);
  }
  words_.push_back(word);
}

void ArrayText::add(std::string_view text) {
  text_ += text_.empty() ? "{\"" : ",\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') text_ += '\\';
    text_ += c;
  }
  text_ += '"';
}

void ArrayText::add(std::span<const unsigned char> bytes) {
  TextBuffer hex;
  hex += "\\x";
  appendHexBytes(hex, bytes);
  add(hex.view());
}

}  // namespace mpuevent::tool
