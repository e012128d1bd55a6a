#include "decoders/configuration.h"

namespace mpuevent::configuration {

void writeDump(BodyWriter& body, RecordView data, std::size_t start, std::int64_t count) {
  body.openGroup("Hex");
  if (count > 0) body.hexBytes(data.bytes(start, static_cast<std::size_t>(count)));
  body.closeGroup("Hex");
  body.character('\n');  // this group alone has something behind it
}

}  // namespace mpuevent::configuration
