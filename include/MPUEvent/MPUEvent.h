#ifndef MPUEVENT_MPUEVENT_H
#define MPUEVENT_MPUEVENT_H

#include <CMAP/CMAPMessageHeader.h>
#include <CMAP/CMAPOperationFailedException.h>
#include <CMAP/Quarn_istream.h>
#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// The envelope of one event message: its CMAP header, and its body, which is one raw record.
///
/// An envelope is empty until a body has been read, and stays loaded from then on. It owns the
/// record; a decoded event keeps nothing of it, so either may be destroyed first. Distinct
/// envelopes may be used on distinct threads at once; one envelope must not.
///
/// Each constructor advances `CMAPMessageHeader::nextHandleValue` by one, although the header
/// that it is given replaces the one that drew the handle.
class MPUEVENT_API MPUEvent {
 public:
  /// An empty envelope.
  MPUEVENT_PEGASUS_ABI explicit MPUEvent(const CMAPMessageHeader& header);
  /// An envelope loaded from `stream`; throws what `deserialize` throws.
  MPUEVENT_PEGASUS_ABI MPUEvent(const CMAPMessageHeader& header, Quarn_istream& stream);
  /// Copies header and record. The copy is loaded, with a record of 0 bytes if `other` is empty.
  MPUEVENT_PEGASUS_ABI MPUEvent(const MPUEvent& other);
  /// Never returns, but for self-assignment: assigning a different envelope recurses until the
  /// stack is used up. Copy envelopes with the copy constructor.
  __attribute__((
      deprecated("assigning one MPUEvent to another never returns: use the copy "
                 "constructor"))) MPUEvent
  operator=(const MPUEvent& other);
  virtual ~MPUEvent();

  virtual CMAPMessageHeader getCMAPMessageHeader() const;
  /// The record stays as it is.
  virtual void setCMAPMessageHeader(const CMAPMessageHeader& header);

  /// One line: the header's `str()`, then the numbers of the record's header, or
  /// "<No MMSG Data!>" if the envelope is empty.
  virtual String str() const;

  /// Reads the message's body, (total length - 64) bytes modulo 2^16, and releases the body read
  /// before. Throws `CMAPOperationFailedException` with the code of entry 30 of
  /// `CMAPErrorCodes::_errorCodeArray` if the stream ends early, of entry 28 if it fails, and
  /// whatever the stream throws; the envelope is then loaded with what arrived, followed by zeros.
  /// Returns `stream`.
  virtual Quarn_istream& deserialize(Quarn_istream& stream);

  /// Decodes the record with the decoder class of its source; a source without one gives a plain
  /// `Quarn_Event`. Null if the envelope is empty or its record shorter than the 152-byte header.
  /// The caller owns the event. Throws nothing but what allocation throws.
  MPUEVENT_PEGASUS_ABI MPUEVENT_NODISCARD Quarn_Event* create_Quarn_Event() const;

 private:
  CMAPMessageHeader header_;
  EmpEvLogMsg_s* record_;
  unsigned int recordLength_;
};

}  // namespace Pegasus

#endif
