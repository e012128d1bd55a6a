#ifndef MPUEVENT_TOOL_EVENTFACTS_H
#define MPUEVENT_TOOL_EVENTFACTS_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "BodyFields.h"
#include "EventForm.h"
#include "Utf8.h"

namespace mpuevent::tool {

/// The name of a fact, in room of a fixed size so that it can be copied without a look at its own.
struct FactKey {
  template <std::size_t count>
  consteval FactKey(const char (&name)[count]) : size(count - 1) {
    std::copy_n(name, size, room.begin());
  }

  constexpr std::string_view name() const { return {room.data(), size}; }

  std::array<char, 24> room{};
  std::size_t size;
};

/// `"name"_key` is one object for the whole program.
template <FactKey key>
constexpr const FactKey& operator""_key() {
  return key;
}

/// What the forms tell of an event: one list for all of them, so that they tell the same. Made to
/// be used again for event after event.
class EventFacts {
 public:
  /// Both arguments must last as long as the facts are asked for.
  void read(const DecodedEvent& decoded);

  /// Gives every fact but the Body's to `form`, in order:
  /// - `number(key, number)`
  /// - `offset(key, number)`
  /// - `text(key, utf8)`
  /// - `coded(codeKey, code, wordKey, word)`: a code and its word.
  template <typename Form>
  void describe(Form& form) const {
    form.number("index"_key, index_);
    form.offset("offset"_key, offset_);
    form.text("decoder"_key, decoder_);
    form.text("enclosure_serial"_key, enclosureSerial_);
    form.text("controller_serial"_key, controllerSerial_);
    form.number("controller_slot"_key, controllerSlot_);
    form.number("log_instance"_key, logInstance_);
    form.number("sequence_id"_key, sequenceId_);
    form.number("timestamp"_key, timestamp_);
    form.coded("source_code"_key, sourceCode_, "source"_key, source_);
    form.coded("category_code"_key, categoryCode_, "category"_key, category_);
    form.coded("event_type_code"_key, eventTypeCode_, "event_type"_key, eventType_);
    form.number("event_code"_key, eventCode_);
    form.number("event_id_version"_key, eventIdVersion_);
    form.text("event_id"_key, eventId_);
    form.text("summary"_key, summary_);
  }

  /// `Utf8Text::padding` bytes behind it may be read.
  std::string_view body() const { return body_; }
  /// The Body's elements; null if it is not made of elements alone.
  const BodyFields* fields() const { return bodyParses_ ? &fields_ : nullptr; }
  /// 1 informational, 2 warning, 3 error, 0 none of these.
  unsigned eventTypeCode() const { return eventTypeCode_; }

 private:
  std::string_view eventTypeText(Pegasus::Quarn_Event& event);

  std::uint64_t index_ = 0;
  std::uint64_t offset_ = 0;
  std::string_view decoder_;
  std::string_view enclosureSerial_;
  std::string_view controllerSerial_;
  unsigned controllerSlot_ = 0;
  unsigned logInstance_ = 0;
  unsigned sequenceId_ = 0;
  unsigned timestamp_ = 0;
  unsigned sourceCode_ = 0;
  std::string_view source_;
  unsigned categoryCode_ = 0;
  std::string_view category_;
  unsigned eventTypeCode_ = 0;
  std::string_view eventType_;
  unsigned eventCode_ = 0;
  unsigned eventIdVersion_ = 0;
  std::string_view eventId_;
  std::string_view summary_;
  std::string_view body_;

  std::array<Utf8Text, 7> texts_;
  std::map<unsigned, std::string> eventTypes_;  // the words of the codes seen so far
  BodyFields fields_;
  bool bodyParses_ = false;
};

}  // namespace mpuevent::tool

#endif
