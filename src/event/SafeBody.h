#ifndef EVENT_SAFEBODY_H
#define EVENT_SAFEBODY_H

#include <string_view>
#include <vector>

#include "event/BodyWriter.h"
#include "event/ShortVector.h"

namespace mpuevent {

/// A body with texts that must be made safe: what comes of it is `safeString` of the body with all
/// texts as they are. A decoder writes what a record brings along with the `record...` functions,
/// and with the `literal...` ones what is its own.
///
/// As long as no text of the record could close an element that it stands in, each is made safe by
/// itself as it is written, which gives the same as a pass over the whole body: an element that a
/// text opens ends with that text. From the first on that could, they are written as they are, and
/// the whole body is passed over when it is finished. That takes literals which need no escape, and
/// keys inside a group of which none begins with the group's key: both are asserted.
class SafeBody {
 public:
  /// For tags, numbers and the decoder's own words.
  BodyWriter& literals() { return body_; }
  /// So many of the literals' characters were written with an escape, as they need one.
  void countEscapes(std::size_t count) { escapes_ += count; }

  /// A group with texts of the record in it; there is never a group inside.
  void openGroup(std::string_view key);
  void closeGroup();

  /// The text must stay where it is until the body is finished.
  void recordElement(std::string_view key, std::string_view text);

  /// The size of the body before anything was escaped.
  std::size_t rawSize() const { return body_.size() - escapes_; }
  /// The finished body.
  Pegasus::String string();

 private:
  /// A text of the record that was changed by escaping or may have backslashes of its own, and
  /// where it stands in `body_`.
  struct EscapedText {
    std::size_t at;
    std::size_t size;
    const char* rawText;
    std::size_t rawSize;

    std::string_view raw() const { return {rawText, rawSize}; }
  };

  bool mayClose(std::string_view key, std::string_view text) const;
  bool isSafe() const;
  void writeRaw(BodyWriter& raw) const;
  std::vector<Pegasus::Uint32> rawPositions() const;

  BodyBuffer body_;
  ShortVector<EscapedText, 8> escapedTexts_;
  std::size_t escapes_ = 0;  ///< how many characters escaping has added
  std::string_view group_;
  bool needsPass_ = false;  ///< whether a text of the record may close one of the body's elements
};

}  // namespace mpuevent

#endif
