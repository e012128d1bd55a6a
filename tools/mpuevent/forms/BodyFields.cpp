#include "BodyFields.h"

#include "Utf8.h"

namespace mpuevent::tool {

void BodyFields::take(const Pegasus::FieldRecorder& recorded, PaddedView body, std::size_t units) {
  fields_.clear();
  Utf8Cursor cursor(body, units);
  const auto part = [&](std::size_t start, std::size_t length) {
    const std::size_t begin = cursor.byteOf(start);
    return body.part(begin, cursor.byteOf(start + length) - begin);
  };
  std::size_t depth = 0;
  for (const Pegasus::RecordedField& field : recorded) {
    for (; depth > field.depth; --depth) fields_.push_back({BodyField::groupEnd, {}, {}});
    const PaddedView key = part(field.keyStart, field.keyLength);
    if (field.isGroup) {
      fields_.push_back({BodyField::groupBegin, key, {}});
      ++depth;
    } else {
      fields_.push_back({BodyField::value, key, part(field.valueStart, field.valueLength)});
    }
  }
  for (; depth > 0; --depth) fields_.push_back({BodyField::groupEnd, {}, {}});
}

}  // namespace mpuevent::tool
