#include "records/SampleRecords.h"

#include <MPUEvent/AIMMP_Event.h>
#include <MPUEvent/AWR8P_Event.h>
#include <MPUEvent/CACHE18P_Event.h>
#include <MPUEvent/CACHE28P_Event.h>
#include <MPUEvent/DDLMMP_Event.h>
#include <MPUEvent/DRIVEADMP_Event.h>
#include <MPUEvent/ENVIRONMP_Event.h>
#include <MPUEvent/HACCMP_Event.h>
#include <MPUEvent/ICHAR_Event.h>
#include <MPUEvent/IOMGR8P_Event.h>
#include <MPUEvent/ISCSIMP_Event.h>
#include <MPUEvent/ISNSC_Event.h>
#include <MPUEvent/MIP8P_Event.h>
#include <MPUEvent/MSMMP_Event.h>
#include <MPUEvent/NETWORK_CONFIGMP_Event.h>
#include <MPUEvent/OB0_Event.h>
#include <MPUEvent/OB1_Event.h>
#include <MPUEvent/SNMPMP_Event.h>
#include <MPUEvent/STARTUPMP_Event.h>
#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

namespace mpuevent::samples {

#define MODULE(decoder, source, samples) std::vector<Sample> samples();
#include "records/Modules.inc"
#undef MODULE

namespace {

template <class Decoder>
Pegasus::Quarn_Event* construct(Pegasus::EmpEvLogMsg_s* record, int length) {
  return new Decoder(record, length);
}

template <>
Pegasus::Quarn_Event* construct<Pegasus::Quarn_Event>(Pegasus::EmpEvLogMsg_s* record, int length) {
  return new Pegasus::Quarn_Event(record, static_cast<unsigned int>(length));
}

}  // namespace

Sample::Sample(std::uint16_t number, std::uint8_t version, std::uint8_t severity, std::uint8_t kind,
               const support::Payload& bytes)
    : id(number), idVersion(version), type(severity), category(kind), payload(bytes.str()) {}

const std::vector<Module>& modules() {
  static const std::vector<Module> rows = {
#define MODULE(decoder, source, samples) {#decoder, source, construct<Pegasus::decoder>, samples},
#include "records/Modules.inc"
#undef MODULE
  };
  return rows;
}

support::RecordBuilder record(const Module& module, const Sample& sample) {
  return support::RecordBuilder()
      .source(module.source)
      .type(sample.type)
      .category(sample.category)
      .idVersion(sample.idVersion)
      .id(sample.id)
      .payload(sample.payload);
}

}  // namespace mpuevent::samples
