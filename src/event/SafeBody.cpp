#include "event/SafeBody.h"

#include <cassert>
#include <utility>

#include "event/SafeText.h"
#include "event/TagFinder.h"

namespace mpuevent {

namespace {

constexpr std::size_t markSize = 2;  // of "</"

}  // namespace

void SafeBody::openGroup(std::string_view key) {
  body_.openGroup(key);
  group_ = key;
}

void SafeBody::closeGroup() {
  body_.closeGroup(group_);
  group_ = {};
}

/// Whether a closing tag in the text, which has one, may be that of the element `key`, of the group
/// around it, or of both, or reach beyond the end of the text.
bool SafeBody::mayClose(std::string_view key, std::string_view text) const {
  // A name has a '>' at most as its first character, so it ends before the next.
  const std::size_t last = text.rfind("</") + markSize;
  if (text.find('>', last + 1) == std::string_view::npos) return true;
  for (std::size_t at = findClosingMark(text); at < text.size(); at = findClosingMark(text, at)) {
    at += markSize;
    const std::string_view name = text.substr(at);
    const bool isInGroup = !group_.empty();
    if (name.starts_with('>') || name.starts_with(key)) return true;
    if (isInGroup && name.starts_with(group_)) return true;
  }
  return false;
}

void SafeBody::recordElement(std::string_view key, std::string_view text) {
  body_.openElement(key);
  const std::size_t before = body_.size();
  const bool hasTags = !needsPass_ && mayHaveTags(text);
  needsPass_ = needsPass_ || (hasTags && mayClose(key, text));
  if (needsPass_) {
    body_.text(text);
  } else if (hasTags) {
    writeSafe(body_, text);
  } else {
    writeEscaped(body_, text);
  }
  const std::size_t size = body_.size() - before;
  // One that stays as it is may have backslashes, which a literal has not.
  if (size != text.size() || needsPass_ || hasTags) {
    escapes_ += size - text.size();
    escapedTexts_.push_back({before, size, text.data(), text.size()});
  }
  body_.closeElement(key);
}

Pegasus::String SafeBody::string() {
  if (!needsPass_) {
    assert(isSafe());
    return body_.string();
  }
  BodyBuffer raw(Separator::none);
  writeRaw(raw);
  if (body_.hasMarks()) raw.takeMarks(body_, rawPositions());
  return safeString(raw);
}

/// Whether a pass over the whole body gives the same.
bool SafeBody::isSafe() const {
  BodyBuffer raw(Separator::none);
  writeRaw(raw);
  return safeBytes(raw.view()) == body_.view();
}

/// The body with nothing escaped. A literal has no backslash but that before a special character.
void SafeBody::writeRaw(BodyWriter& raw) const {
  const auto copyLiterals = [&raw](std::string_view literals) {
    for (;;) {
      const std::size_t escape = literals.find('\\');
      raw.text(literals.substr(0, escape));
      if (escape == std::string_view::npos) return;
      literals.remove_prefix(escape + 1);
    }
  };
  std::size_t at = 0;
  for (const EscapedText& text : escapedTexts_) {
    copyLiterals(body_.view().substr(at, text.at - at));
    raw.text(text.raw());
    at = text.at + text.size;
  }
  copyLiterals(body_.view().substr(at));
}

/// For each place of `body_`, and its end, where `raw` has what stands there. Tags never begin or
/// end inside a text: for that its beginning will do.
std::vector<Pegasus::Uint32> SafeBody::rawPositions() const {
  const std::string_view body = body_.view();
  std::vector<Pegasus::Uint32> positions;
  positions.reserve(body.size() + 1);
  Pegasus::Uint32 raw = 0;
  auto text = escapedTexts_.begin();
  while (positions.size() < body.size()) {
    const std::size_t at = positions.size();
    if (text != escapedTexts_.end() && at == text->at) {
      positions.resize(at + text->size, raw);
      raw += static_cast<Pegasus::Uint32>(text->rawSize);
      ++text;
    } else {
      positions.push_back(raw);
      raw += body[at] == '\\' ? 0U : 1U;
    }
  }
  positions.push_back(raw);
  return positions;
}

}  // namespace mpuevent
