#include "event/SafeText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "event/Text.h"

namespace mpuevent {

namespace {

/// Whether a character stays as it is.
constexpr std::array<bool, 256> isKept = [] {
  std::array<bool, 256> table{};
  const std::string_view kept =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 \t\n.:,()-\"/_#'";
  for (const char character : kept) table[static_cast<unsigned char>(character)] = true;
  return table;
}();

/// How many characters of the text stay as they are before the first that does not.
std::size_t keptLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && isKept[static_cast<unsigned char>(text[length])]) ++length;
  return length;
}

struct Range {
  std::size_t begin;
  std::size_t end;
};

/// A tag that may turn out to open an element.
struct OpenTag {
  Range name;
  std::size_t tagsBefore;  ///< how many tags had been found when this one was
};

/// Finds open tags by name among many: `matchAt` costs one look-up for each length of name, not
/// one for each tag.
class TagIndex {
 public:
  TagIndex(std::string_view text, const std::vector<OpenTag>& open)
      : text_(text), open_(open), hashes_(text.size() + 1), powers_(text.size() + 1, 1) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      hashes_[i + 1] = hashes_[i] * factor + static_cast<unsigned char>(text[i]) + 1;
      powers_[i + 1] = powers_[i] * factor;
    }
  }

  /// Takes in the tag at `index`, unless a tag further out has the same name.
  void add(std::size_t index) {
    const Range name = open_[index].name;
    const std::size_t length = name.end - name.begin;
    if (find(name.begin, length) != none) return;
    tags_.emplace(hash(name.begin, length), index);
    ++lengths_[length];
  }

  void remove(std::size_t index) {
    const Range name = open_[index].name;
    const std::size_t length = name.end - name.begin;
    const auto [first, last] = tags_.equal_range(hash(name.begin, length));
    for (auto entry = first; entry != last; ++entry) {
      if (entry->second != index) continue;
      tags_.erase(entry);
      const auto count = lengths_.find(length);
      if (--count->second == 0) lengths_.erase(count);
      return;
    }
  }

  /// The outermost tag whose name stands at `at` with at least one character behind it.
  std::size_t matchAt(std::size_t at) const {
    std::size_t outermost = none;
    for (const auto& [length, count] : lengths_) {
      if (length >= text_.size() - at) break;
      outermost = std::min(outermost, find(at, length));
    }
    return outermost;
  }

  static constexpr std::size_t none = static_cast<std::size_t>(-1);

 private:
  static constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;

  std::uint64_t hash(std::size_t at, std::size_t length) const {
    return (hashes_[at + length] - hashes_[at] * powers_[length]) ^ length;
  }

  std::size_t find(std::size_t at, std::size_t length) const {
    const auto [first, last] = tags_.equal_range(hash(at, length));
    for (auto entry = first; entry != last; ++entry) {
      const Range name = open_[entry->second].name;
      if (name.end - name.begin == length &&
          text_.substr(name.begin, length) == text_.substr(at, length)) {
        return entry->second;
      }
    }
    return none;
  }

  std::string_view text_;
  const std::vector<OpenTag>& open_;
  std::vector<std::uint64_t> hashes_;  ///< of the text's first n characters, at n
  std::vector<std::uint64_t> powers_;
  std::unordered_multimap<std::uint64_t, std::size_t> tags_;
  std::map<std::size_t, std::size_t> lengths_;  ///< how many tags have a name of this length
};

/// Finds the tags of a text that belong to elements, in one pass and without recursion.
///
/// An element ends at the first closing tag behind its opening tag that has its name, whatever
/// lies between; elements inside it are then looked for in what lies between. Read from left to
/// right, that means: a closing tag closes the outermost open tag that it fits, and all tags
/// opened inside that one and still open were plain text.
class TagFinder {
 public:
  explicit TagFinder(std::string_view text) : text_(text) {
    open_.reserve(fewTags);
    tags_.reserve(8 * fewTags);
  }

  /// The opening and closing tags of all elements, in the order of the text.
  std::vector<Range> find() && {
    bool inTag = false;
    std::size_t tagStart = 0;
    for (std::size_t at = nextBracket(0); at < text_.size(); at = nextBracket(at)) {
      if (text_[at] == '<') {
        if (const std::size_t end = close(at); end != 0) {
          inTag = false;
          at = end;
          continue;
        }
        if (!inTag) {
          inTag = true;
          tagStart = at;
        }
      } else if (inTag && at > tagStart + 1) {
        inTag = false;
        open(tagStart, at);
      }
      ++at;
    }
    dropFrom(0);
    return std::move(tags_);
  }

 private:
  /// Open tags are compared one by one up to this many.
  static constexpr std::size_t fewTags = 8;

  struct Match {
    std::size_t index;  ///< of the open tag
    Range closingTag;
  };

  void open(std::size_t tagStart, std::size_t nameEnd) {
    open_.push_back({
        {tagStart + 1, nameEnd},
        tags_.size()
    });
    tags_.push_back({tagStart, nameEnd + 1});
    if (index_ != nullptr) {
      index_->add(open_.size() - 1);
    } else if (open_.size() > fewTags) {
      index_ = std::make_unique<TagIndex>(text_, open_);
      for (std::size_t i = 0; i < open_.size(); ++i) index_->add(i);
    }
  }

  std::size_t nextBracket(std::size_t at) const {
    while (at < text_.size() && text_[at] != '<' && text_[at] != '>') ++at;
    return at;
  }

  /// Closes an element if a closing tag starts at `at`; returns the tag's end, else 0.
  std::size_t close(std::size_t at) {
    Match match = matchAt(at, open_.size());
    if (match.index == TagIndex::none) return 0;
    // A name may hold "</": if a tag further out is closed before this closing tag is complete,
    // then that one counts, and this element was not closed.
    for (std::size_t inside = text_.find('<', at + 1); inside < match.closingTag.end;
         inside = text_.find('<', inside + 1)) {
      const Match outer = matchAt(inside, match.index);
      if (outer.index != TagIndex::none) match = outer;
    }
    dropFrom(match.index + 1);
    tags_.push_back(match.closingTag);
    removeOpen(match.index);
    return match.closingTag.end;
  }

  /// The outermost of the first `limit` open tags that a closing tag at `at` fits.
  Match matchAt(std::size_t at, std::size_t limit) const {
    const Match noMatch{TagIndex::none, {}};
    if (limit == 0 || text_.substr(at, 2) != "</") return noMatch;
    const std::size_t nameStart = at + 2;
    if (nameStart >= text_.size()) return noMatch;
    if (text_[nameStart] == '>')
      return {
          0, {at, nameStart + 1}
      };
    const std::size_t index = index_ == nullptr ? compareAt(nameStart) : index_->matchAt(nameStart);
    if (index >= limit) return noMatch;
    // Whatever character follows the name counts as the closing ">".
    const Range name = open_[index].name;
    return {
        index, {at, nameStart + (name.end - name.begin) + 1}
    };
  }

  std::size_t compareAt(std::size_t nameStart) const {
    for (std::size_t i = 0; i < open_.size(); ++i) {
      const Range name = open_[i].name;
      const std::size_t length = name.end - name.begin;
      if (length < text_.size() - nameStart &&
          text_.substr(name.begin, length) == text_.substr(nameStart, length)) {
        return i;
      }
    }
    return TagIndex::none;
  }

  /// The open tags from `index` on were plain text, and so was every tag found inside them.
  void dropFrom(std::size_t index) {
    if (index >= open_.size()) return;
    tags_.resize(open_[index].tagsBefore);
    removeOpen(index);
  }

  void removeOpen(std::size_t index) {
    if (index_ != nullptr) {
      for (std::size_t i = open_.size(); i > index; --i) index_->remove(i - 1);
    }
    open_.resize(index);
  }

  std::string_view text_;
  std::vector<OpenTag> open_;
  std::vector<Range> tags_;
  std::unique_ptr<TagIndex> index_;
};

std::vector<Range> tagsOf(std::string_view text) {
  if (text.find('<') == std::string_view::npos) return {};
  return TagFinder(text).find();
}

void writeSafe(BodyWriter& out, std::string_view text, const std::vector<Range>& tags) {
  std::size_t done = 0;
  for (const Range tag : tags) {
    writeEscaped(out, text.substr(done, tag.begin - done));
    out.text(text.substr(tag.begin, tag.end - tag.begin));
    done = tag.end;
  }
  writeEscaped(out, text.substr(done));
}

/// Where `writeSafe` has each character, or the escape before it, and the end.
std::vector<Pegasus::Uint32> safePositions(std::string_view text, const std::vector<Range>& tags) {
  std::vector<Pegasus::Uint32> positions;
  positions.reserve(text.size() + 1);
  Pegasus::Uint32 position = 0;
  auto tag = tags.begin();
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (tag != tags.end() && at == tag->end) ++tag;
    positions.push_back(position);
    const bool inTag = tag != tags.end() && at >= tag->begin;
    position += inTag || isKept[static_cast<unsigned char>(text[at])] ? 1U : 2U;
  }
  positions.push_back(position);
  return positions;
}

}  // namespace

void writeEscaped(BodyWriter& out, std::string_view text) {
  const std::size_t before = out.size();
  char* const start = out.claim(2 * text.size());
  char* place = start;
  for (;;) {
    const std::size_t kept = keptLength(text);
    place = std::copy_n(text.data(), kept, place);
    text.remove_prefix(kept);
    if (text.empty()) break;
    const bool equals = text.front() == '=';
    *place++ = equals ? ':' : '\\';
    *place++ = equals ? ' ' : text.front();
    text.remove_prefix(1);
  }
  out.cut(before + static_cast<std::size_t>(place - start));
}

std::string safeBytes(std::string_view text) {
  BodyWriter safe(Separator::none, 2 * text.size());
  writeSafe(safe, text, tagsOf(text));
  return std::string(safe.view());
}

Pegasus::String safeString(std::string_view text) {
  if (keptLength(text) == text.size()) return toString(text);
  BodyWriter safe(Separator::none, 2 * text.size());
  writeSafe(safe, text, tagsOf(text));
  return safe.string();
}

Pegasus::String safeString(BodyWriter raw) {
  const std::vector<Range> tags = tagsOf(raw.view());
  BodyWriter safe(Separator::none, 2 * raw.size());
  writeSafe(safe, raw.view(), tags);
  if (raw.hasMarks()) safe.takeMarks(raw, safePositions(raw.view(), tags));
  return safe.string();
}

}  // namespace mpuevent
