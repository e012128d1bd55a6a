#ifndef MPUEVENT_TOOL_JSONELEMENTS_H
#define MPUEVENT_TOOL_JSONELEMENTS_H

#include "BodyFields.h"
#include "JsonWriter.h"

namespace mpuevent::tool {

/// The elements of a Body as an array of `{"key":...,"value":...}` and
/// `{"key":...,"fields":[...]}`.
inline void writeElements(JsonWriter& writer, const BodyFields& fields) {
  writer.beginArray();
  fields.forEach([&writer](const BodyField& field) {
    switch (field.kind) {
      case BodyField::value:
        writer.element(field.key, field.text);
        break;
      case BodyField::groupBegin:
        writer.beginObject();
        writer.key("key"_key);
        writer.text(field.key);
        writer.key("fields"_key);
        writer.beginArray();
        break;
      case BodyField::groupEnd:
        writer.endArray();
        writer.endObject();
        break;
    }
  });
  writer.endArray();
}

inline void appendElements(TextBuffer& to, const BodyFields& fields) {
  JsonWriter writer(to);
  writeElements(writer, fields);
}

}  // namespace mpuevent::tool

#endif
