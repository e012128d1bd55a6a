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

char* putBigEndian(char* to, std::uint64_t number, unsigned bytes) {
  while (bytes-- > 0) *to++ = static_cast<char>(number >> (8 * bytes) & 0xFF);
  return to;
}

// Of a byte of a word that begins at `begin`, and of the letters of Latin-1 in UTF-8.
unsigned char lowerAt(const char* at, const char* begin) {
  const auto byte = static_cast<unsigned char>(*at);
  const bool upperLatin1 = byte >= 0x80 && byte <= 0x9E && byte != 0x97 && at != begin &&
                           static_cast<unsigned char>(at[-1]) == 0xC3;
  return upperLatin1 ? static_cast<unsigned char>(byte + 0x20) : kOfWord[byte];
}

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
  to_.advanceTo(putBigEndian(to_.reserve(sizeof number), number, bytes));
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
  lexemes_.clear();
  std::size_t size = sizeof(std::uint32_t);
  for (std::size_t at = 0; at < words_.size();) {
    const std::size_t begin = at;
    while (at < words_.size() && words_[at].isSame(words_[begin])) ++at;
    const Lexeme lexeme{begin, std::min(at - begin, kMostPlaces)};
    lexemes_.push_back(lexeme);
    size += words_[begin].text.size() + 1 + 2 * (1 + lexeme.places);
  }
  integer(size, 4);
  integer(lexemes_.size(), 4);
  char* to = to_.reserve(size);
  for (const Lexeme& lexeme : lexemes_) {
    const std::string_view text = words_[lexeme.first].text;
    to = std::copy(text.begin(), text.end(), to);
    *to++ = '\0';
    to = putBigEndian(to, lexeme.places, 2);
    for (std::size_t at = lexeme.first; at < lexeme.first + lexeme.places; ++at) {
      to = putBigEndian(to, std::min(words_[at].place, kLastPlace), 2);
    }
  }
  to_.advanceTo(to);
}

// Without the name in a closing tag, whose words were in the opening one.
void CopyText::takeText(std::string_view text) {
  std::string_view opened;
  for (std::size_t tag = 0; (tag = text.find('<')) != std::string_view::npos;) {
    room_.append(text.substr(0, ++tag));
    text.remove_prefix(tag);
    if (!opened.empty() && text.starts_with('/') && text.substr(1).starts_with(opened) &&
        text.substr(1 + opened.size()).starts_with('>')) {
      text.remove_prefix(1 + opened.size());
    } else {
      const auto isBracket = [](char c) { return c == '<' || c == '>'; };
      opened = {text.begin(), std::find_if(text.begin(), text.end(), isBracket)};
    }
  }
  room_.append(text).append(1, ' ');
}

// In lower case and sorted.
void CopyText::findWords(std::span<const std::string_view> texts) {
  room_.clear();
  for (const std::string_view text : texts) takeText(text);
  words_.clear();
  char* const end = room_.data() + room_.size();
  for (char* at = room_.data(); at != end; ++at) {
    char* const begin = at;
    std::uint64_t beginning = 0;
    // A space is the last.
    for (unsigned char lower = lowerAt(at, begin); lower != 0; lower = lowerAt(++at, begin)) {
      *at = static_cast<char>(lower);
      if (at - begin < sizeOfBeginning) beginning = beginning << 8 | lower;
    }
    const auto size = static_cast<std::size_t>(at - begin);
    if (size == 0 || size > kLongestWord) continue;
    if (size < sizeOfBeginning) beginning <<= 8 * (sizeOfBeginning - size);
    words_.push_back({
        beginning, {begin, size},
         words_.size() + 1
    });
  }
  std::sort(words_.begin(), words_.end());
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
