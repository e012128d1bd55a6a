#ifndef MPUEVENT_FIELDRECORDER_H
#define MPUEVENT_FIELDRECORDER_H

#include <MPUEvent/Export.h>
#include <Pegasus/Common/Config.h>

#include <cstddef>

namespace mpuevent {
class Recording;
}

namespace Pegasus {

/// An element of a Body, and where it lies there. All positions and lengths count the 16-bit units
/// of the Body's `String`, as its `size()` and `subString()` do; `keyStart`, `valueStart` and
/// `start` count from the Body's beginning.
struct RecordedField {
  Uint32 start;   ///< of the opening tag
  Uint32 length;  ///< up to the end of the closing tag
  Uint32 keyStart;
  Uint32 keyLength;
  Uint32 valueStart;
  Uint32 valueLength;  ///< of a group: all that stands between its tags
  Uint32 depth;        ///< how many groups are around it
  /// Whether the value is elements: those that follow in the list and are deeper.
  bool isGroup;
};

/// Records which elements the decoders write into a Body. The Body alone does not tell: the texts
/// that come from the firmware may hold what looks like tags.
///
///     Pegasus::FieldRecorder fields;
///     const std::unique_ptr<Pegasus::Quarn_Event> event(envelope.create_Quarn_Event());
///     const Pegasus::String body = event->getBody();
///     for (const Pegasus::RecordedField& field : fields) {
///       show(body.subString(field.keyStart, field.keyLength),
///            body.subString(field.valueStart, field.valueLength));
///     }
///
/// It records on its thread, from its construction to its destruction, and holds the elements of
/// the event that was constructed last there, in the order of the Body. It must be destroyed on the
/// same thread; of several that live there the youngest records. As long as a process has no
/// recorder, decoding is as fast as without this class.
///
/// Recorded is what the library's own functions write: the decoders' constructors and their
/// `get_..._event_body` functions, `addEntry`, `xmlize`, `xmlizeString`, `XmlString`. Their texts
/// are found again when they become the Body by `setBody` or `appendBody`, one or several behind
/// one another. An element that is written with its value ready-made is no group, whatever the
/// value holds. Recording throws nothing but what allocation throws.
class MPUEVENT_API FieldRecorder {
 public:
  FieldRecorder();
  ~FieldRecorder();
  FieldRecorder(const FieldRecorder&) = delete;
  FieldRecorder& operator=(const FieldRecorder&) = delete;

  /// The elements, each group before those in it. Valid until the thread's next event is
  /// constructed or its Body is changed.
  const RecordedField* begin() const;
  const RecordedField* end() const;
  std::size_t size() const;

  /// Whether the Body is nothing but these elements and white space between them; so it is with
  /// every event of `create_Quarn_Event`. Not so when a text from elsewhere was set or appended.
  bool isComplete() const;

 private:
  mpuevent::Recording* recording_;
};

}  // namespace Pegasus

#endif
