#include "decoders/iscsimp/elements.h"

#include "decoders/iscsimp/tables.h"
#include "event/Codes.h"

namespace mpuevent::iscsimp {

void writeReason(BodyWriter& body, RecordView data) {
  writeCode(body, data, statusCode, packed<status_texts>, unknownCode);
}

void writeStatus(BodyWriter& summary, RecordView data) {
  writeCodeText(summary, packed<status_texts>, numberAt(data, statusCode), statusCode.format,
                unknownCode);
}

void writeSocketSuffix(BodyWriter& summary, RecordView data) {
  summary.words(", Socket ");
  summary.decimal(data.u32(socketNumber.offset));
}

}  // namespace mpuevent::iscsimp
