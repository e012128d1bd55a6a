#include <MPUEvent/DRIVEADMP_Event.h>
#include <MPUEvent/ENVIRONMP_Event.h>
#include <MPUEvent/ES_ADAPTERMP.h>
#include <MPUEvent/EVENTLOGMP.h>
#include <MPUEvent/HACCMP_Event.h>
#include <MPUEvent/ICHAR_Event.h>
#include <MPUEvent/MSMMP_Event.h>
#include <MPUEvent/OB0_Event.h>
#include <MPUEvent/OB1_Event.h>
#include <MPUEvent/PIEMAN8P.h>
#include <MPUEvent/SNMPMP_Event.h>
#include <gtest/gtest.h>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using namespace mpuevent::support;
using namespace Pegasus;

TEST(UnknownEvents, ShowThePayloadInHexAndTraceTheId) {
  struct Case {
    std::uint8_t source;
    const char* summary;
    const char* trace;
  };
  const Case cases[] = {
      {5,  "Unhandled Event by IOMGR8P",   "IOMGR8P_Event:98              :----: "},
      {7,  "Unhandled Event by MIP",       "MIP8P_Event:96                :----: "},
      {18, "Unhandled Event by STARTUPMP", "STARTUPMP_Event:259           :----: "},
      {19, "***UNKNOWN EventID***",        "SYSTEM_CONFIGMP_Event:137     :----: "},
      {24, "***UNKNOWN EventID***",        "NETWORK_CONFIGMP_Event:114    :----: "},
      {12, "Unhandled Event by ICHAR",     "ICHAR_Event:96                :----: "},
      {13, "Unhandled Event by OB0",       "OB0_Event:99                  :----: "},
      {14, "Unhandled Event by OB1",       "OB1_Event:99                  :----: "},
      {15, "Unhandled Event by HACCMP",    "HACCMP_Event:99               :----: "},
      {16, "Unhandled Event by MSMMP",     "MSMMP_Event:99                :----: "},
      {21, "Unhandled Event by DRIVEADMP", "DRIVEADMP_Event:96            :----: "},
      {26, "Unhandled Event by ENVIRONMP", "ENVIRONMP_Event:99            :----: "},
      {28, "Unhandled Event by SNMPMP",    "SNMPMP_Event:99               :----: "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(+c.source);
    const TraceCapture trace;
    const auto event = decode(
        RecordBuilder().source(c.source).id(26).payload(std::string("\x01\xAB\0\x7F", 4)).str());
    EXPECT_EQ(textsOf(*event), (Texts{"26", c.summary, "<Hex>01AB007F</Hex>"}));
    // The digits are decimal, whatever stands before them.
    const char* const told = c.source == 18 ? "Unknown EventID: 26" : "Unknown EventID: 0x26";
    EXPECT_EQ(trace.lines(), std::vector<std::string>{std::string(c.trace) + told});
  }
}

TEST(GenericDecoders, DumpWhatIsHeldAndBelongsToThePayload) {
  const auto bodyOf = [](std::uint16_t structLength) {
    return utf8(decode(RecordBuilder().source(13).structLength(structLength).payload("abc").str())
                    ->getBody());
  };
  EXPECT_EQ(bodyOf(0), "<Hex></Hex>");
  EXPECT_EQ(bodyOf(2), "<Hex>6162</Hex>");
  EXPECT_EQ(bodyOf(3), "<Hex>616263</Hex>");
  EXPECT_EQ(bodyOf(65535), "<Hex>616263</Hex>");
}

TEST(GenericDecoders, OfferASampleBodyForEachModule) {
  using Sample = String (*)(EmpEvLogMsg_s const*);
  const Sample samples[] = {
      get_ICHAR_such_and_such_event_body,      get_OB0_such_and_such_event_body,
      get_OB1_such_and_such_event_body,        get_HACCMP_such_and_such_event_body,
      get_MSMMP_such_and_such_event_body,      get_DRIVEADMP_such_and_such_event_body,
      get_ENVIRONMP_such_and_such_event_body,  get_SNMPMP_such_and_such_event_body,
      get_EVENTLOGMP_such_and_such_event_body, get_ES_ADAPTERMP_such_and_such_event_body,
      get_PIEMAN8P_such_and_such_event_body,
  };
  for (const Sample sample : samples) EXPECT_EQ(utf8(sample(nullptr)), "Sample Body text");
}

}  // namespace
