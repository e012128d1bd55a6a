#ifndef MPUEVENT_TOOL_EVENTFACTS_H
#define MPUEVENT_TOOL_EVENTFACTS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "BodyFields.h"
#include "EventForm.h"
#include "FactKey.h"
#include "PaddedView.h"
#include "Utf8.h"
#include "event/RecordView.h"
#include "log/recognition/LogProfile.h"

namespace mpuevent::tool {

/// Texts that events have by a code alone, converted once.
class CodeTexts {
 public:
  /// `convert(Utf8Text&)` gives the text of a code that is new. Valid as long as this is.
  template <typename Convert>
  PaddedView of(std::uint8_t code, const Convert& convert) {
    std::unique_ptr<Entry>& entry = entries_[code];
    if (!entry) {
      entry = std::make_unique<Entry>();
      entry->text = convert(entry->room);
    }
    return entry->text;
  }

 private:
  struct Entry {
    Utf8Text room;
    PaddedView text;
  };

  std::array<std::unique_ptr<Entry>, 256> entries_;
};

/// What the forms tell of an event: one list for all of them, so that they tell the same under the
/// same names. Made to be used again for event after event, all of them as they were decoded from
/// their records: what is the same of the events of one code, or of one controller, is asked of
/// one.
class EventFacts {
 public:
  /// Without its body nobody is to ask for it.
  explicit EventFacts(ShowPayload payload, bool withBody = true)
      : showPayload_(payload), withBody_(withBody) {}

  /// What `decoded` refers to must last as long as the facts are asked for.
  void read(const DecodedEvent& decoded);

  /// Gives the facts to `form`, in order. Those of the event, before its Body:
  /// - `number(key, number)`
  /// - `offset(key, number)`
  /// - `text(key, utf8)`: a PaddedView or a view
  /// - `coded(codeKey, code, wordKey, word)`: a code and its word
  /// - `timestamp(key, number, utf8)`: with its date, which is empty if it is not known.
  template <typename Form>
  void describeEvent(Form& form) const {
    form.number("index"_key, index_);
    form.offset("offset"_key, offset_);
    form.text("decoder"_key, decoder_);
    form.text("enclosure_serial"_key, enclosureSerial_);
    form.text("controller_serial"_key, controllerSerial_);
    form.number("controller_slot"_key, controllerSlot_);
    form.number("log_instance"_key, logInstance_);
    form.number("sequence_id"_key, sequenceId_);
    form.timestamp("timestamp"_key, timestamp_, time_);
    form.coded("source_code"_key, sourceCode_, "source"_key, source_);
    form.coded("category_code"_key, categoryCode_, "category"_key, category_);
    form.coded("event_type_code"_key, eventTypeCode_, "event_type"_key, eventType_);
    form.number("event_code"_key, eventCode_);
    form.number("event_id_version"_key, eventIdVersion_);
    form.text("event_id"_key, eventId_);
    form.text("summary"_key, summary_);
  }
  /// The Body: `body(key, utf8, fieldsKey, fields)`, the fields null if the Body was not recorded
  /// or has more than elements.
  template <typename Form>
  void describeBody(Form& form) const {
    form.body("body"_key, body_, "fields"_key, fieldsKnown_ ? &fields_ : nullptr);
  }
  /// The record:
  /// - `detail(key, number, telling)`: not telling if the facts before it tell it already
  /// - `payload(key, bytes)`: none if it is not to be shown
  /// - `file(key, utf8)`: none for standard input
  /// - `time(key, utf8)`: the date of the timestamp, empty if it is not known.
  template <typename Form>
  void describeRecord(Form& form) const {
    const bool lengthsDiffer = !lengthsAgree();
    form.detail("raw_event_type"_key, rawEventType_, rawEventType_ != eventTypeCode_);
    form.detail("record_length"_key, recordLength_, lengthsDiffer);
    form.detail("struct_length"_key, structLength_, lengthsDiffer);
    form.payload("payload"_key, payload_);
    form.file("file"_key, file_);
    form.time("time"_key, time_);
  }

 private:
  /// Serial numbers as they were converted last.
  struct Serials {
    std::optional<std::array<unsigned char, log::serialsSize>> bytes;
    Utf8Text enclosureText;
    Utf8Text controllerText;
    PaddedView enclosure;
    PaddedView controller;
  };

  bool lengthsAgree() const { return recordLength_ == Record::headerSize + structLength_; }
  void readSerials(const Pegasus::Quarn_Event& event, const Record& record);
  void readCodes(const DecodedEvent& decoded, const Record& record);
  void readBody(const DecodedEvent& decoded);
  void readFile(std::optional<std::string_view> file);
  bool payloadWanted() const;

  const ShowPayload showPayload_;
  const bool withBody_;

  std::uint64_t index_ = 0;
  std::uint64_t offset_ = 0;
  PaddedView decoder_;
  PaddedView enclosureSerial_;
  PaddedView controllerSerial_;
  unsigned controllerSlot_ = 0;
  unsigned logInstance_ = 0;
  unsigned sequenceId_ = 0;
  unsigned timestamp_ = 0;
  std::string_view time_;
  unsigned sourceCode_ = 0;
  PaddedView source_;
  unsigned categoryCode_ = 0;
  PaddedView category_;
  unsigned eventTypeCode_ = 0;
  PaddedView eventType_;
  unsigned eventCode_ = 0;
  unsigned eventIdVersion_ = 0;
  PaddedView eventId_;
  PaddedView summary_;
  PaddedView body_;
  unsigned rawEventType_ = 0;
  std::size_t recordLength_ = 0;
  std::size_t structLength_ = 0;
  std::optional<std::span<const unsigned char>> payload_;
  std::optional<PaddedView> file_;

  std::array<Serials, 8> serials_;  // by the controller's slot: those in turn are not lost
  CodeTexts decoders_;
  CodeTexts sources_;
  CodeTexts categories_;
  CodeTexts eventTypes_;
  Utf8Text eventIdText_;
  Utf8Text summaryText_;
  Utf8Text bodyText_;
  TextBuffer timeText_;
  std::string fileBytes_;  // what fileText_ was made of
  Utf8Text fileText_;
  BodyFields fields_;
  bool fieldsKnown_ = false;
};

}  // namespace mpuevent::tool

#endif
