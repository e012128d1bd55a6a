#ifndef DECODERS_ISCSIMP_ELEMENTS_H
#define DECODERS_ISCSIMP_ELEMENTS_H

#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/RecordView.h"

namespace mpuevent::iscsimp {

// What several kinds of payload have alike.

inline constexpr Field statusCode = {"Reason", 2, Width::u16, Format::udec};
inline constexpr Field socketNumber = {"Socket", 4, Width::u32, Format::udec};

/// The text of a payload's status code, as an element and as a summary.
void writeReason(BodyWriter& body, RecordView data);
void writeStatus(BodyWriter& summary, RecordView data);

/// ", Socket n", the end of a summary.
void writeSocketSuffix(BodyWriter& summary, RecordView data);

}  // namespace mpuevent::iscsimp

#endif
