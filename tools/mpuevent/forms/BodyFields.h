#ifndef MPUEVENT_TOOL_BODYFIELDS_H
#define MPUEVENT_TOOL_BODYFIELDS_H

#include <MPUEvent/FieldRecorder.h>

#include <cstddef>
#include <span>

#include "PaddedView.h"
#include "Utf8.h"

namespace mpuevent::tool {

/// One step through the elements of a Body, in their order.
struct BodyField {
  enum Kind {
    value,       ///< `<key>text</key>`
    groupBegin,  ///< `<key>` of an element whose content is elements
    groupEnd,    ///< the end of the group begun last
  };

  Kind kind;
  PaddedView key;     ///< empty at a group's end
  PaddedView text;    ///< of a value, as it stands in the Body; else empty
  std::size_t depth;  ///< how many groups are around it
};

/// The elements of a Body as the decoder wrote them, whatever their texts look like.
class BodyFields {
 public:
  BodyFields() = default;
  /// `body` is the recorded event's, of `units` 16-bit units, in UTF-8. Both must last.
  BodyFields(const Pegasus::FieldRecorder& recorded, PaddedView body, std::size_t units)
      : recorded_(recorded.begin(), recorded.size()), body_(body), units_(units) {}

  bool empty() const { return recorded_.empty(); }
  std::size_t size() const { return recorded_.size(); }

  /// How many bytes all keys and values take at most: none of them lies in another.
  std::size_t textSize() const { return body_.size(); }

  /// Calls `visit(BodyField)` for one after another. Time is linear in the length of the Body.
  template <typename Visit>
  void forEach(const Visit& visit) const {
    const auto unitByUnit = [](std::size_t unit) { return unit; };
    if (body_.isPlain()) {  // most are: made code of its own by that
      forEach<true>(unitByUnit, visit);
    } else if (body_.size() == units_) {
      forEach<false>(unitByUnit, visit);
    } else {
      forEach<false>(
          [cursor = Utf8Cursor(body_)](std::size_t unit) mutable { return cursor.byteOf(unit); },
          visit);
    }
  }

 private:
  // `byteOf` tells where a unit begins; it is asked for one behind another.
  template <bool plain, typename ByteOf, typename Visit>
  void forEach(ByteOf byteOf, const Visit& visit) const {
    const auto part = [&](std::size_t start, std::size_t length) {
      const std::size_t begin = byteOf(start);
      return body_.part(begin, byteOf(start + length) - begin, plain);
    };
    std::size_t depth = 0;
    const auto endGroups = [&](std::size_t outer) {
      while (depth > outer) visit(BodyField{BodyField::groupEnd, {}, {}, --depth});
    };
    for (const Pegasus::RecordedField& field : recorded_) {
      endGroups(field.depth);
      const PaddedView key = part(field.keyStart, field.keyLength);
      if (field.isGroup) {
        visit(BodyField{BodyField::groupBegin, key, {}, depth++});
      } else {
        visit(BodyField{BodyField::value, key, part(field.valueStart, field.valueLength), depth});
      }
    }
    endGroups(0);
  }

  std::span<const Pegasus::RecordedField> recorded_;
  PaddedView body_;
  std::size_t units_ = 0;
};

}  // namespace mpuevent::tool

#endif
