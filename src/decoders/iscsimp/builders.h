#ifndef DECODERS_ISCSIMP_BUILDERS_H
#define DECODERS_ISCSIMP_BUILDERS_H

#include <cstddef>

#include "event/BodyWriter.h"
#include "event/RecordView.h"

namespace mpuevent::iscsimp {

/// Writes the elements and the summary of a payload. `data` holds as much of it as there is.
using WriteEvent = void(BodyWriter& body, BodyWriter& summary, RecordView data);

WriteEvent writeBasicEvent;    // BASIC_DATA
WriteEvent writeSocketEvent;   // SOCKET_DATA
WriteEvent writeParamEvent;    // PARAM_DATA
WriteEvent writeLoginEvent;    // LOGIN_DATA
WriteEvent writeRequestEvent;  // REQUEST_DATA
WriteEvent writeMessageEvent;  // MESSAGE_DATA

/// The bytes of an iSCSI header segment.
constexpr std::size_t headerSegmentSize = 48;

/// The elements of an iSCSI header segment.
void writeBhs(BodyWriter& body, RecordView bhs);
void writeLoginRequestBhs(BodyWriter& body, RecordView bhs);
void writeTextRequestBhs(BodyWriter& body, RecordView bhs);

/// The four bytes at `at` in dotted decimal.
void writeIpAddress(BodyWriter& out, RecordView layout, std::size_t at);

}  // namespace mpuevent::iscsimp

#endif
