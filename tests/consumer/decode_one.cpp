// Decodes a record as an agent does: C++11, and nothing but what is installed.
#include <MPUEvent/FieldRecorder.h>
#include <MPUEvent/MPUEvent.h>
#include <MPUEvent/Version.h>

#include <cstring>
#include <memory>
#include <string>

namespace {

using Pegasus::CMAPMessageHeader;

std::string text(const Pegasus::String& string) { return std::string(string.getCString()); }

}  // namespace

// 0 if everything came out as it must, else the number of the check that failed.
extern "C" __attribute__((visibility("default"))) int decodeOne() {
  if (std::strcmp(mpuevent_version(), MPUEVENT_VERSION) != 0) return 7;
  char record[154] = {};
  record[145] = 2;   // payload length
  record[146] = 12;  // source
  record[152] = 0x4B;
  record[153] = 0x5A;
  const unsigned char wire[CMAPMessageHeader::wireSize] = {};
  CMAPMessageHeader header(wire);
  header.setTotalLength(sizeof wire + sizeof record);

  Pegasus::Quarn_imemstream stream(record, sizeof record);
  const Pegasus::MPUEvent envelope(header, stream);
  const Pegasus::FieldRecorder fields;
  const std::unique_ptr<Pegasus::Quarn_Event> event(envelope.create_Quarn_Event());
  if (!event) return 1;
  if (text(event->getSource()) != "iChar") return 2;
  if (text(event->getBody()) != "<Hex>4B5A</Hex>") return 3;
  if (fields.size() != 1 || fields.begin()->valueStart != 5 || !fields.isComplete()) return 6;
  try {
    Pegasus::Quarn_imemstream cut(record, sizeof record - 1);
    const Pegasus::MPUEvent damaged(header, cut);
    return 4;
  } catch (const Pegasus::CMAPOperationFailedException& failure) {
    return text(failure.getMessage()).empty() ? 5 : 0;
  }
}
