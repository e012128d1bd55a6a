#include "event/TagFinder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "event/NameIndex.h"
#include "event/NameTree.h"

namespace mpuevent {

namespace {

/// A tag that may turn out to open an element.
struct OpenTag {
  Range name;
  std::size_t tagsBefore;  ///< how many tags had been found when this one was
};

/// Reads a text from left to right: a closing tag closes the outermost open tag that it fits, and
/// all tags opened inside that one and still open were plain text.
class TagFinder {
 public:
  TagFinder(std::string_view text, Tags& tags) : text_(text), tags_(tags) {}

  void find() {
    for (std::size_t at = nextBracket(0); at < text_.size(); at = nextBracket(at)) at = step(at);
    dropFrom(0);
  }

 private:
  /// A closing tag, and the number of the open tag that it closes.
  struct Match {
    std::size_t index;
    Range closingTag;
  };

  std::size_t nextBracket(std::size_t at) const {
    if (isPlain_) return std::min(findClosingMark(text_, at), text_.size());
    while (at < text_.size() && text_[at] != '<' && text_[at] != '>') ++at;
    return at;
  }

  /// Takes in the bracket at `at` and what belongs to it; returns where to go on.
  std::size_t step(std::size_t at) {
    if (text_[at] == '>') {
      // A name has at least one character: "<>" goes on to the next ">".
      if (tagStart_ && at > *tagStart_ + 1) open({*tagStart_ + 1, at});
    } else if (const std::optional<Match> match = closingTagAt(at)) {
      close(*match);
      return match->closingTag.end;
    } else if (!tagStart_) {
      tagStart_ = at;
    }
    return at + 1;
  }

  void open(Range name) {
    isPlain_ = cannotBeClosed(name);
    if (isPlain_) return;
    open_.push_back({name, tags_.size()});
    tags_.push_back({name.begin - 1, name.end + 1});
    ++openNames_[firstCharacter(name.begin)];
    if (tree_) tree_->push(name);
    if (index_) index_->push(name);
    tagStart_.reset();
  }

  /// Whether the name begins with that of an open tag: what would close the new one closes that
  /// one. So the new one is plain text, and so is all behind it up to a closing tag of those open.
  /// It is one like any other where it takes too long to tell.
  bool cannotBeClosed(Range name) {
    if (openNames_[firstCharacter(name.begin)] == 0) return false;
    if (index_) return index_->lowestAt(name.begin).has_value();
    if (tree_) return tree_->lowestAt(name.begin).has_value();
    return compared_ <= text_.size() / 2 && comparedAt(name.begin, open_.size());
  }

  void close(const Match& match) {
    dropFrom(match.index + 1);
    tags_.push_back(match.closingTag);
    popFrom(match.index);
    tagStart_.reset();
    isPlain_ = false;
  }

  std::optional<Match> closingTagAt(std::size_t at) {
    std::optional<Match> match = matchAt(at, open_.size());
    if (!match) return match;
    // A name may hold "</": if a tag further out is closed before this closing tag is complete,
    // then that one counts, and this element was not closed.
    for (std::size_t inside = text_.find('<', at + 1); inside < match->closingTag.end;
         inside = text_.find('<', inside + 1)) {
      if (const std::optional<Match> outer = matchAt(inside, match->index)) match = outer;
    }
    return match;
  }

  /// The outermost of the first `limit` open tags that a closing tag at `at` fits.
  std::optional<Match> matchAt(std::size_t at, std::size_t limit) {
    const std::size_t nameStart = at + 2;
    if (limit == 0 || nameStart >= text_.size() || text_[at + 1] != '/') return std::nullopt;
    if (text_[nameStart] == '>') {
      return Match{
          0, {at, nameStart + 1}
      };
    }
    if (openNames_[firstCharacter(nameStart)] == 0) return std::nullopt;
    const std::optional<std::size_t> index = nameAt(nameStart, limit);
    if (!index || *index >= limit) return std::nullopt;
    // Whatever character follows the name counts as the closing ">".
    return Match{
        *index, {at, nameStart + open_[*index].name.size() + 1}
    };
  }

  /// The first open tag whose name stands at `at` with a character behind it.
  std::optional<std::size_t> nameAt(std::size_t at, std::size_t limit) {
    if (index_) return index_->lowestAt(at);
    if (!tree_) {
      if (compared_ <= text_.size()) return comparedAt(at, limit);
      tree_.emplace(lookedUp());
      for (const OpenTag& tag : open_) tree_->push(tag.name);
    }
    const std::optional<std::size_t> name = tree_->lowestAt(at);
    if (tree_->work() > NameTree::mostWork * text_.size()) makeIndex();
    return name;
  }

  /// The same for few names: each is compared.
  std::optional<std::size_t> comparedAt(std::size_t at, std::size_t limit) {
    const std::string_view characters = lookedUp().substr(at);
    for (std::size_t i = 0; i < limit; ++i) {
      const std::string_view name = text_.substr(open_[i].name.begin, open_[i].name.size());
      ++compared_;
      if (!characters.starts_with(name.front())) continue;
      compared_ += name.size();
      if (characters.starts_with(name)) return i;
    }
    return std::nullopt;
  }

  void makeIndex() {
    std::size_t longest = 0;
    std::size_t last = 0;
    for (std::size_t at = text_.find('>'); at < text_.size(); at = text_.find('>', at + 1)) {
      longest = std::max(longest, at - last);
      last = at;
    }
    // Only its first character can be a ">".
    index_.emplace(lookedUp(), longest + 1);
    for (const OpenTag& tag : open_) index_->push(tag.name);
    tree_.reset();
  }

  /// The last character is left out: a name at the very end closes nothing.
  std::string_view lookedUp() const { return text_.substr(0, text_.size() - 1); }

  /// The open tags from `index` on were plain text, and so was every tag found inside them.
  void dropFrom(std::size_t index) {
    if (index >= open_.size()) return;
    tags_.cut(open_[index].tagsBefore);
    popFrom(index);
  }

  void popFrom(std::size_t index) {
    for (; open_.size() > index; open_.pop_back()) {
      --openNames_[firstCharacter(open_.back().name.begin)];
      if (tree_) tree_->pop();
      if (index_) index_->pop();
    }
  }

  unsigned char firstCharacter(std::size_t at) const {
    return static_cast<unsigned char>(text_[at]);
  }

  std::string_view text_;
  std::optional<std::size_t> tagStart_;  ///< of a tag whose ">" has not come yet
  bool isPlain_ = false;                 ///< whether a tag has come that cannot be closed
  ShortVector<OpenTag, 16> open_;
  Tags& tags_;
  std::array<std::uint32_t, 256> openNames_{};  ///< how many begin with each character
  std::size_t compared_ = 0;                    ///< characters
  std::optional<NameTree> tree_;                ///< when to compare names has cost too much
  std::optional<NameIndex> index_;              ///< when the tree has
};

}  // namespace

std::size_t findClosingMark(std::string_view text, std::size_t from) {
  constexpr std::uint64_t each = 0x0101010101010101;
  const auto differences = [text](std::size_t at, unsigned char character) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + at, sizeof word);
    return word ^ each * character;
  };
  std::size_t at = std::min(text.find('<', from), text.size());
  // Eight places at once: a byte is zero where both characters are as wanted.
  for (; text.size() - at > sizeof each; at += sizeof each) {
    const std::uint64_t both = differences(at, '<') | differences(at + 1, '/');
    if (((both - each) & ~both & each * 0x80) != 0) break;
  }
  for (; text.size() - at >= 2; ++at) {
    if (text[at] == '<' && text[at + 1] == '/') return at;
  }
  return std::string_view::npos;
}

void findTags(std::string_view text, Tags& tags) {
  if (mayHaveTags(text)) TagFinder(text, tags).find();
}

}  // namespace mpuevent
