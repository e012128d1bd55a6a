#ifndef MPUEVENT_TOOL_BODYFIELDS_H
#define MPUEVENT_TOOL_BODYFIELDS_H

#include <span>
#include <string_view>
#include <vector>

namespace mpuevent::tool {

/// One step through the elements of a Body, in their order.
struct BodyField {
  enum Kind {
    value,       ///< `<key>text</key>`
    groupBegin,  ///< `<key>` of an element whose content is elements
    groupEnd,    ///< the end of the group begun last
  };

  Kind kind;
  std::string_view key;   ///< empty at a group's end
  std::string_view text;  ///< of a value, as it stands in the Body; else empty
};

/// A Body taken apart: `<key>text</key>` elements with nothing, blanks or line ends between them.
///
/// A key is anything without "<" and ">", also nothing. The text runs to the first closing tag of
/// the same key; escapes in it stay as they are. A text that begins with "<" and is itself
/// elements from end to end makes a group, down to 8 levels; what is nested deeper is a text.
class BodyFields {
 public:
  /// False if the body is not made of elements alone; there are no fields then. The fields point
  /// into `body`. Time is linear in its length.
  bool parse(std::string_view body);

  std::span<const BodyField> fields() const { return fields_; }

 private:
  bool parseElements(std::string_view text, int level);

  std::vector<BodyField> fields_;
};

}  // namespace mpuevent::tool

#endif
