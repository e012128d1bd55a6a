#include "redaction/TextIndex.h"

#include <algorithm>

namespace mpuevent::tool {

namespace {

constexpr std::uint64_t kHashBegin = 0xCBF29CE484222325;

constexpr std::uint64_t hashOn(std::uint64_t hash, unsigned char byte) {
  return (hash ^ byte) * 0x100000001B3;
}

std::size_t slot(std::uint32_t anchor) { return (anchor * 0x9E3779B1U) >> 16; }

bool isWordByte(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isPrintable(char c) { return c >= ' ' && c <= '~'; }

}  // namespace

unsigned char TextIndex::folded(char c) const {
  return static_cast<unsigned char>(anyCase_ && c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
}

std::uint32_t TextIndex::anchorOf(std::string_view bytes) const {
  std::uint32_t anchored = 0;
  for (const char c : bytes.substr(0, anchor)) anchored = anchored << 8 | folded(c);
  return anchored;
}

std::size_t TextIndex::commonSize(std::string_view one, std::string_view other) const {
  const std::size_t size = std::min(one.size(), other.size());
  std::size_t at = 0;
  while (at < size && folded(one[at]) == folded(other[at])) ++at;
  return at;
}

bool TextIndex::equal(std::string_view one, std::string_view other) const {
  return one.size() == other.size() && commonSize(one, other) == one.size();
}

void TextIndex::add(std::string_view text, std::uint32_t number) {
  if (text.empty()) return;
  std::string bytes(text);
  for (char& c : bytes) c = static_cast<char>(folded(c));
  if (bytes.size() < anchor) {
    shortStarts_.set(static_cast<unsigned char>(bytes[0]));
    shortOnes_.emplace(std::move(bytes), number);
    return;
  }
  const std::size_t size = std::min(bytes.size(), longest);
  std::uint64_t hash = kHashBegin;
  for (const char c : bytes.substr(0, size)) hash = hashOn(hash, static_cast<unsigned char>(c));
  if (!byHash_.emplace(hash, static_cast<std::uint32_t>(texts_.size())).second) return;
  const std::uint32_t anchored = anchorOf(bytes);
  lengths_[anchored].set(size);
  anchors_.set(slot(anchored));
  texts_.push_back({std::move(bytes), number});
}

std::optional<TextIndex::Match> TextIndex::at(std::string_view bytes, std::size_t at) const {
  const std::string_view rest = bytes.substr(at);
  if (rest.size() >= anchor && anchors_[slot(anchorOf(rest))]) {
    if (const std::optional<Match> match = longAt(rest)) return match;
  }
  if (!rest.empty() && shortStarts_[folded(rest[0])]) return shortAt(bytes, at);
  return std::nullopt;
}

std::optional<TextIndex::Match> TextIndex::longAt(std::string_view bytes) const {
  const auto lengths = lengths_.find(anchorOf(bytes));
  if (lengths == lengths_.end()) return std::nullopt;
  std::size_t left = lengths->second.count();
  std::optional<Match> match;
  std::uint64_t hash = kHashBegin;
  for (std::size_t size = 1; left != 0 && size <= std::min(bytes.size(), longest); ++size) {
    hash = hashOn(hash, folded(bytes[size - 1]));
    if (!lengths->second[size]) continue;
    --left;
    const auto known = byHash_.find(hash);
    if (known == byHash_.end()) continue;
    const Text& text = texts_[known->second];
    if (equal(std::string_view(text.bytes).substr(0, longest), bytes.substr(0, size))) {
      match = Match{commonSize(text.bytes, bytes), text.number};
    }
  }
  return match;
}

std::optional<TextIndex::Match> TextIndex::shortAt(std::string_view bytes, std::size_t at) const {
  std::string text;
  std::optional<Match> match;
  for (std::size_t size = 1; size < anchor && at + size <= bytes.size(); ++size) {
    text += static_cast<char>(folded(bytes[at + size - 1]));
    const auto known = shortOnes_.find(text);
    if (known != shortOnes_.end() && isWord(bytes, at, size)) match = Match{size, known->second};
  }
  return match;
}

// Among other bytes than those of a text a single byte is most likely a number.
bool TextIndex::isWord(std::string_view bytes, std::size_t at, std::size_t length) const {
  const std::size_t end = at + length;
  if (at != 0 && isWordByte(bytes[at - 1])) return false;
  if (end < bytes.size() && isWordByte(bytes[end])) return false;
  return length > 1 || (at != 0 && isPrintable(bytes[at - 1])) ||
         (end < bytes.size() && isPrintable(bytes[end]));
}

bool TextIndex::anyIn(std::string_view bytes) const {
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    if (this->at(bytes, at)) return true;
  }
  return false;
}

}  // namespace mpuevent::tool
