#include <MPUEvent/CACHE28P_Event.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using namespace mpuevent::support;

constexpr std::uint8_t cache1 = 3;
constexpr std::uint8_t cache2 = 4;

RecordBuilder bugcheck(unsigned id, std::size_t payloadSize, std::uint8_t source = cache1) {
  // 01, 02, 03 and so on: the word at offset 4 is 0x05060708.
  Payload payload;
  while (payload.str().size() < payloadSize) {
    payload.u8(static_cast<std::uint8_t>(payload.str().size() + 1));
  }
  return RecordBuilder().source(source).id(static_cast<std::uint16_t>(id)).payload(payload);
}

TEST(CacheBugchecks, WithoutAMeaningAreTracedAndShownInHex) {
  for (const std::uint8_t source : {cache1, cache2}) {
    SCOPED_TRACE(+source);
    const TraceCapture trace;
    EXPECT_EQ(textsOf(*decode(bugcheck(47, 2, source).str())),
              (Texts{"Bugcheck 47", "Unhandled Event by CACHE18P", "<Hex>0102</Hex>"}));
    const std::vector<std::string> lines = trace.lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].substr(0, 15), "CACHE18P_Event:");
    EXPECT_EQ(lines[0].substr(lines[0].find(":----")), ":----: Unknown EventID: 0x47");
  }
  EXPECT_EQ(textsOf(*decode(bugcheck(145, 4, cache2).str())),
            (Texts{"Bugcheck 145", "CLH free count went over total count",
                   "<cache_index>0x1020304</cache_index> "}));
  EXPECT_EQ(utf8(decode(bugcheck(65535, 0).str())->getEventID()), "Bugcheck 65535");
}

}  // namespace
