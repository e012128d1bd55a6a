#ifndef EVENT_SAFETEXT_H
#define EVENT_SAFETEXT_H

#include <string_view>

#include "event/BodyWriter.h"

namespace mpuevent {

/// The text with everything escaped but the tags of well-formed elements, as
/// `Quarn_Event::makeSafeString` tells.
Pegasus::String safeString(std::string_view text);
/// The same of a body, whose elements keep their marks.
Pegasus::String safeString(BodyWriter raw);

/// A body on its way through `safeBody`. What a record brings along, and each character of the
/// decoder's own that needs an escape, is written with the functions of this class, all else with
/// those of the base.
class SafeBody : public BodyWriter {
 public:
  enum class Texts : bool { raw, escaped };

  explicit SafeBody(Texts texts) : escaping_(texts == Texts::escaped) {}

  void recordText(std::string_view text);
  void recordElement(std::string_view key, std::string_view text);
  void specialCharacter(char value) {
    if (escaping_) character('\\');
    character(value);
  }

  /// Whether a text could be mistaken for a tag.
  bool hasTagLikeText() const { return tagLike_; }

 private:
  bool escaping_;
  bool tagLike_ = false;
};

/// The body that `write(SafeBody&)` writes, as `safeString` makes it safe.
///
/// Without a '<' in any text, each text can be escaped as it is written, and the pass over the
/// whole body is saved; else `write` is called once more for a raw body. Both give the same as
/// long as no group's key is the beginning of a key inside the group.
template <class Write>
Pegasus::String safeBody(Write write) {
  SafeBody body(SafeBody::Texts::escaped);
  write(body);
  if (!body.hasTagLikeText()) return body.string();
  SafeBody raw(SafeBody::Texts::raw);
  write(raw);
  return safeString(static_cast<BodyWriter&&>(raw));
}

}  // namespace mpuevent

#endif
