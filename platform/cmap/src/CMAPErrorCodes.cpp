#include <CMAP/CMAPErrorCodes.h>

#include <algorithm>

namespace Pegasus {
namespace {

constexpr const char* texts[] = {
    "CMAP operation failed",
    "Reading the message body failed",
    "The message body ended before the length in its header",
};

constexpr std::array<CMAPErrorCodes::Entry, CMAPErrorCodes::entryCount> makeEntries() {
  // Off the indexes, so that one taken for the other shows.
  constexpr Uint32 firstCode = 0x1000;
  std::array<CMAPErrorCodes::Entry, CMAPErrorCodes::entryCount> entries{};
  for (Uint32 i = 0; i < entries.size(); ++i) {
    entries[i] = {firstCode + i, 0};
  }
  entries[28].text = 1;
  entries[30].text = 2;
  return entries;
}

}  // namespace

constinit const std::array<CMAPErrorCodes::Entry, CMAPErrorCodes::entryCount>
    CMAPErrorCodes::_errorCodeArray = makeEntries();

Uint32 CMAPErrorCodes::getIndex(Uint32 code) {
  const auto found = std::find_if(_errorCodeArray.begin(), _errorCodeArray.end(),
                                  [code](const Entry& entry) { return entry.code == code; });
  return static_cast<Uint32>(found - _errorCodeArray.begin());
}

String CMAPErrorCodes::getTextForIndex(Uint32 index) {
  return index < entryCount ? texts[_errorCodeArray[index].text] : "Unknown CMAP error";
}

}  // namespace Pegasus
