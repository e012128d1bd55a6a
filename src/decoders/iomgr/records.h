#ifndef DECODERS_IOMGR_RECORDS_H
#define DECODERS_IOMGR_RECORDS_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "event/Fields.h"

namespace mpuevent::iomgr {

/// The part of an event's payload that holds what the event carries.
struct DataArea : RecordView {
  DataArea(RecordView bytes, std::uint32_t meaningful) : RecordView(bytes), length(meaningful) {}

  /// How many bytes the event calls meaningful; the view may hold fewer or more.
  std::uint32_t length;
};

/// A record in a data area: its size and rows, and what follows their elements.
struct RecordLayout : Layout {
  /// Writes the lists inside the record; null if it has none. `record` holds its bytes alone.
  void (*writeLists)(BodyWriter& body, RecordView record) = nullptr;
  /// The records that may follow this one, as many as begin among the meaningful bytes; null if
  /// none do.
  const RecordLayout* run = nullptr;
};

/// Writes the elements of the record at `at` of the data area.
void writeRecord(BodyWriter& body, const DataArea& data, std::size_t at,
                 const RecordLayout& layout);

/// What the events of the I/O manager and of MIP carry.
namespace records {

extern const RecordLayout lwsem;  ///< lightweight semaphore
extern const RecordLayout isurp;  ///< internal SCSI request
extern const RecordLayout drp;    ///< drive request packet
extern const RecordLayout vt;     ///< volume table entry
extern const RecordLayout ext;    ///< extent of a volume
extern const RecordLayout mmsg;   ///< management message
extern const RecordLayout dib;    ///< device information block
extern const RecordLayout sgt;    ///< scatter-gather table
extern const RecordLayout bcd;    ///< background task control block
extern const RecordLayout rcd;    ///< background task control block
extern const RecordLayout rbt;    ///< background task control block
extern const RecordLayout dlm;    ///< diskline metadata
extern const RecordLayout msa;    ///< message queue
extern const RecordLayout fer;    ///< forced error
extern const RecordLayout vbgt;   ///< background task control block
extern const RecordLayout ndfe;   ///< forced error, without a volume

/// A volume table entry and the extents behind it, up to the end of the meaningful bytes.
extern const RecordLayout volume;
/// A run of scatter-gather tables, with nothing before them.
extern const RecordLayout sgtList;

// Plain words.
extern const RecordLayout interrupt;
extern const RecordLayout message;
extern const RecordLayout volumeNumber;

}  // namespace records

}  // namespace mpuevent::iomgr

#endif
