#ifndef MPUEVENT_QUARN_EVENT_H
#define MPUEVENT_QUARN_EVENT_H

#include <MPUEvent/EmpEvLogMsg.h>
#include <MPUEvent/Export.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

/// A decoded event: the header of a record in words and numbers, with the event id text, the
/// one-line Summary and the Body (`<Key>value</Key>` elements) that the decoder of the record's
/// source adds. It is the base of every decoder class, and by itself the decoder of sources that
/// have none of their own: their Summary and Body stay empty.
///
/// An event owns all that it holds and keeps no pointer to the record. Distinct events may be
/// used on distinct threads at once; one event must not.
///
/// What is odd about a record is told by trace lines, which every decoder writes to `std::cout` of
/// the process, each in one piece, unless `ProviderTraceServices::ptsGetTraceSuppressForPid()`
/// says no. They leave the stream's formatting as it is.
class MPUEVENT_API Quarn_Event {
 public:
  /// Decodes a record; every decoder class has a constructor with the same two arguments, its
  /// length as `int`. A record that is not null has its 152 header bytes, which are always read
  /// whole. `length` counts them too, and tells how much of the payload is held behind them:
  /// nothing past it is touched, an element whose bytes are not all held is left out, and below
  /// 152 there is no payload. A null record gives an empty event, in every class. Unknown codes,
  /// and a `length` other than 152 + `evStructLength`, are reported by trace lines only.
  MPUEVENT_PEGASUS_ABI Quarn_Event(const EmpEvLogMsg_s* record, unsigned int length);
  virtual ~Quarn_Event();

  virtual String getEnclosureSerialNumber() const;
  virtual void setEnclosureSerialNumber(String text);
  virtual unsigned int getControllerSlotID() const;
  virtual void setControllerSlotID(unsigned int number);
  virtual String getControllerSerialNumber() const;
  virtual void setControllerSerialNumber(String text);
  virtual unsigned int getEventLogInstanceNumber() const;
  virtual void setEventLogInstanceNumber(unsigned int number);
  virtual unsigned int getSequenceID() const;
  virtual void setSequenceID(unsigned int number);
  /// The firmware's own count; its unit and epoch are not known here.
  virtual unsigned int getTimestamp() const;
  virtual void setTimestamp(unsigned int number);
  /// The short name of the source module, or its number in decimal if it has no name.
  virtual String getSource() const;
  virtual void setSource(String text);
  /// The category word, or its number in decimal if it has none.
  virtual String getCategory() const;
  virtual void setCategory(String text);
  /// "Informational", "Warning", "Error" for the stored numbers 1, 2, 3; else empty.
  /// A const event gives the number instead: the other overload.
  virtual String getEventType();
  /// 1, 2 or 3, or 0 for a type code that is none of these.
  virtual unsigned int getEventType() const;
  virtual void setEventType(unsigned int number);
  virtual String getEventID() const;
  virtual void setEventID(String text);
  virtual String getSummary() const;
  virtual void setSummary(String text);
  virtual String getBody() const;
  virtual void setBody(String text);

  /// The whole event as one text: "Enclosure Ser#: '...', Card Ser#: '...', ..., Body: '...'".
  virtual String str() const;

  /// The name of source module 0-31 or 33; for any other code the code in decimal, and a trace
  /// line.
  String sourceFromEmpValue(unsigned int source) const;
  /// The word of category 1-13; for any other code the code in decimal, and a trace line.
  String categoryFromEmpValue(unsigned int category) const;
  /// Types 1, 2 and 3 unchanged; for any other code 0, and a trace line.
  unsigned int eventTypeFromEmpValue(unsigned int type) const;

  // Text helpers of the decoders. Where they take texts from the caller, a null pointer counts as
  // an empty text, and bytes become a String as UTF-8 if they are valid UTF-8, else each byte as
  // the Latin-1 character of its number.

  /// Writes two upper-case hex digits for each of `count` bytes, then a NUL: 2 * count + 1
  /// characters that the caller owns. A count of 0 or less, or a null source, writes the NUL
  /// alone. Returns the number of characters before the NUL.
  static long hexified(char* destination, const char* source, long count);
  /// The same as a text.
  static String hexifiedString(const char* source, long count);

  /// "<key>value</key>". Nothing is escaped.
  static String xmlize(const char* key, const char* value);
  static String xmlizeString(const char* key, String value);

  /// Filters a key name in place: blanks, tabs and line feeds become "_", letters, digits and "_"
  /// stay, everything else is dropped. With a length above 0 exactly that many bytes are looked
  /// at, and a NUL follows the name if any was dropped. With length 0 the text ends at its NUL,
  /// and no NUL is written: what was behind the dropped characters stays there ("a-b" becomes
  /// "abb"). A length below 0 does nothing.
  static void makeSafeKeyname(char* text, int length);

  /// Escapes free text with backslashes, while well-formed elements in it keep their tags and
  /// have only their content escaped; "=" becomes ": ". A length of 0 means up to the NUL, a
  /// length below 0 is an empty text. Time grows as n log n of the length n at most, whatever the
  /// nesting.
  static String makeSafeString(const char* text, int length);

 private:
  String EnclosureSerialNumber;
  String ControllerSerialNumber;
  unsigned int ControllerSlotID;
  unsigned int EventLogInstanceNumber;
  unsigned int SequenceID;
  unsigned int Timestamp;
  String Source;
  String Category;
  unsigned int EventType;
  String EventID;
  String Summary;
  String Body;

  friend class QuarnEvent;
};

}  // namespace Pegasus

#endif
