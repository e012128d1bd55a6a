#ifndef DECODERS_ISCSIMP_ELEMENTS_H
#define DECODERS_ISCSIMP_ELEMENTS_H

#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/RecordView.h"

namespace mpuevent::iscsimp {

// What several kinds of payload have alike.

inline constexpr Field statusCode = {"Reason", 2, Width::u16, Format::udec};
inline constexpr Field socketNumber = {"Socket", 4, Width::u32, Format::udec};

/// Writes the element that tells the status code of a payload in words.
void writeReason(BodyWriter& body, RecordView data);
/// Writes the same words as a summary.
void writeStatus(BodyWriter& summary, RecordView data);

/// Writes ", Socket n", which ends the summary of an event that succeeded.
void writeSocketSuffix(BodyWriter& summary, RecordView data);

}  // namespace mpuevent::iscsimp

#endif
