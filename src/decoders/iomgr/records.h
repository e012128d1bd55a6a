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

/// The records that events of the I/O manager and of MIP carry.
enum class RecordKind : std::uint8_t {
  nothing,
  lwsem,  ///< lightweight semaphore
  isurp,  ///< internal SCSI request
  drp,    ///< drive request packet
  vt,     ///< volume table entry
  ext,    ///< extent of a volume
  mmsg,   ///< management message
  dib,    ///< device information block
  sgt,    ///< scatter-gather table
  bcd,    ///< background task control block
  rcd,    ///< background task control block
  rbt,    ///< background task control block
  dlm,    ///< diskline metadata
  msa,    ///< message queue
  fer,    ///< forced error
  vbgt,   ///< background task control block
  ndfe,   ///< forced error, without a volume

  volume,   ///< a volume table entry and the extents behind it, up to the end of the meaningful
            ///< bytes
  sgtList,  ///< a run of scatter-gather tables, with nothing before them

  // Plain words.
  interrupt,
  message,
  volumeNumber,
  qmir,
  intStat,

  file,  ///< no record but the text of an assert
};

/// A record in a data area: its size and rows, and what follows their elements.
struct RecordLayout : Layout {
  /// Writes the lists inside the record; null if it has none. `record` holds its bytes alone.
  void (*writeLists)(BodyWriter& body, RecordView record) = nullptr;
  /// The records that may follow this one, as many as begin among the meaningful bytes.
  RecordKind run = RecordKind::nothing;
};

/// Writes the elements of the record at `at` of the data area.
void writeRecord(BodyWriter& body, const DataArea& data, std::size_t at,
                 const RecordLayout& layout);

/// Not of `file`.
const RecordLayout& layoutOf(RecordKind kind);

}  // namespace mpuevent::iomgr

#endif
