#include "event/Undecoded.h"

#include <string_view>

#include "event/BodyWriter.h"
#include "event/Text.h"

namespace mpuevent {

using Pegasus::String;

String hexBody(const Record& record) {
  const std::string_view bytes = record.payload().bytes(0, record.structLength());
  BodyBuffer body(Separator::none);
  body.openElement("Hex");
  body.hexBytes(bytes);
  body.closeElement("Hex");
  return body.string();
}

void showUndecoded(Pegasus::Quarn_Event& event, const Record& record, TraceSite site,
                   const char* summary, NumberBase idBase, const char* traceText) {
  // The base is what it is, even if the text before the number says "0x".
  trace(site, {traceText, TracePart(record.id(), idBase)});
  event.setSummary(summary);
  event.setBody(hexBody(record));
}

void showUnknown(Pegasus::Quarn_Event& event, const Record& record, TraceSite site,
                 const char* summary, NumberBase idBase, const char* traceText) {
  event.setEventID(decimalString(record.id()));
  showUndecoded(event, record, site, summary, idBase, traceText);
}

}  // namespace mpuevent
