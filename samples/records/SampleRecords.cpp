#include "records/SampleRecords.h"

#include "modules/Headers.h"

namespace mpuevent::samples {

#define MODULE(source, word, name) std::vector<Sample> samplesOf##name();
#include "modules/Modules.def"
// Two sources without a decoder, the second without a word, too.
std::vector<Sample> samplesOfMIP_LOCAL();
std::vector<Sample> samplesOfUNNAMED();

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
  static const std::vector<Module> rows = [] {
    std::vector<Module> modules;
    using Pegasus::Quarn_Event;
#define MODULE(source, word, name) \
  modules.push_back({#name, source, construct<Pegasus::name##_Event>, samplesOf##name});
#include "modules/Modules.def"
    modules.push_back({"MIP_LOCAL", 11, construct<Quarn_Event>, samplesOfMIP_LOCAL, true});
    modules.push_back({"UNNAMED", 200, construct<Quarn_Event>, samplesOfUNNAMED, true});
    return modules;
  }();
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
