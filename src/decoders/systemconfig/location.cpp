#include "decoders/systemconfig/location.h"

#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

#include <cstring>

namespace mpuevent::systemconfig {

namespace {

constexpr char zeros[LocationBlock::size] = {};

}  // namespace

LocationBlock::LocationBlock() : block_(zeros, size) {}

void LocationBlock::write(SafeBody& body) const {
  body.recordElement("File", fileName());
  body.recordElement("Func", block_.text(functionAt()));
  if (block_.holds(lineAt, 2)) body.literals().element("Line", Format::dec, line());
}

}  // namespace mpuevent::systemconfig

namespace Pegasus {

void SCC_fetch_event_location_information(SCC_EVENT_LOCINFO_t* loc, int* line, char* funcName,
                                          char* fileName) {
  using mpuevent::systemconfig::LocationBlock;
  const LocationBlock block(mpuevent::RecordView(loc, LocationBlock::size));
  const auto copy = [](char* destination, std::string_view field) {
    if (destination == nullptr) return;
    if (!field.empty()) std::memcpy(destination, field.data(), field.size());
    if (field.find('\0') == std::string_view::npos) destination[field.size()] = '\0';
  };
  if (line != nullptr) *line = block.line();
  copy(fileName, block.fileName());
  copy(funcName, block.functionField());
}

}  // namespace Pegasus
