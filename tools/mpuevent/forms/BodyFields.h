#ifndef MPUEVENT_TOOL_BODYFIELDS_H
#define MPUEVENT_TOOL_BODYFIELDS_H

#include <MPUEvent/FieldRecorder.h>

#include <cstddef>
#include <span>
#include <vector>

#include "PaddedView.h"

namespace mpuevent::tool {

/// One step through the elements of a Body, in their order.
struct BodyField {
  enum Kind {
    value,       ///< `<key>text</key>`
    groupBegin,  ///< `<key>` of an element whose content is elements
    groupEnd,    ///< the end of the group begun last
  };

  Kind kind;
  PaddedView key;   ///< empty at a group's end
  PaddedView text;  ///< of a value, as it stands in the Body; else empty
};

/// The elements of a Body as the decoder wrote them, whatever their texts look like.
class BodyFields {
 public:
  /// `body` is the recorded event's, of `units` 16-bit units, in UTF-8; the fields point into it.
  /// Time is linear in its length.
  void take(const Pegasus::FieldRecorder& recorded, PaddedView body, std::size_t units);

  std::span<const BodyField> fields() const { return fields_; }

 private:
  std::vector<BodyField> fields_;
};

}  // namespace mpuevent::tool

#endif
