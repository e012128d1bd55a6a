#include "EventProperties.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "EventDecoder.h"
#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::provider {

namespace {

using Pegasus::String;
using Pegasus::Uint16;
using Pegasus::Uint32;
using Pegasus::Uint64;
using tool::FactKey;
using tool::PaddedView;

constexpr const char* kOwner = "MPU";

String ascii(const std::string& text) { return {text.data(), static_cast<Uint32>(text.size())}; }

/// What CIM says of the alerts of a category.
struct Classification {
  Uint16 alertType;      // 2 communications, 4 processing, 5 device, 6 environmental
  Uint16 probableCause;  // of errors and warnings
};
constexpr Uint16 kOtherAlertType = 1;
constexpr Uint16 kUnknownCause = 0;

constexpr Classification kByCategory[] = {
    {1, 0 }, // none: Other, Unknown
    {4, 47}, // System: Software Error
    {4, 8 }, // Management: Configuration/Customization Error
    {6, 16}, // Environmental: Equipment Malfunction
    {5, 16}, // Device
    {5, 16}, // Volume
    {5, 16}, // Device
    {2, 6 }, // SCSI: Communications Protocol Error
    {2, 6 }, // iSCSI
    {2, 7 }, // Network: Communications Subsystem Failure
    {5, 16}, // Hardware
    {5, 24}, // I/O: I/O Device Error
    {5, 16}, // Cache
    {2, 7 }, // iSNS
};

Classification classify(unsigned category, Uint16 severity) {
  constexpr Uint16 kWarning = 3;
  Classification found = kByCategory[category < std::size(kByCategory) ? category : 0];
  if (severity < kWarning) found.probableCause = kUnknownCause;
  return found;
}

/// The facts of an event as properties.
class PropertyForm {
 public:
  explicit PropertyForm(bool placed) : placed_(placed) {}

  Properties take() { return std::move(properties_); }

  void number(const FactKey& key, std::uint64_t number) {
    const std::string name = nameOf(key);
    if (name == "Index") return offset(key, number);
    add(name, static_cast<Uint32>(number));
  }
  void offset(const FactKey& key, std::uint64_t number) {
    if (placed_) add(nameOf(key), static_cast<Uint64>(number));
  }
  void timestamp(const FactKey& key, std::uint64_t count, std::string_view) { number(key, count); }
  void text(const FactKey& key, std::string_view utf8) { add(nameOf(key), xmlSafe(utf8)); }
  void coded(const FactKey& codeKey, unsigned code, const FactKey& wordKey, PaddedView word) {
    number(codeKey, code);
    text(wordKey, word);
  }
  void body(const FactKey& key, PaddedView utf8, const FactKey&, const tool::BodyFields* fields) {
    text(key, utf8);
    if (fields != nullptr) addFields(fields->fields());
  }
  void detail(const FactKey& key, std::uint64_t number, bool) { this->number(key, number); }
  void payload(const FactKey& key, std::optional<std::span<const unsigned char>> bytes) {
    if (!bytes) return;
    add(nameOf(key),
        Pegasus::Quarn_Event::hexifiedString(reinterpret_cast<const char*>(bytes->data()),
                                             static_cast<long>(bytes->size())));
  }
  void file(const FactKey& key, std::optional<PaddedView> name) {
    if (placed_ && name) text(key, *name);
  }
  void time(const FactKey&, std::string_view date) {
    if (date.empty()) return;
    std::string digits;
    std::copy_if(date.begin(), date.end(), std::back_inserter(digits),
                 [](char c) { return c >= '0' && c <= '9'; });
    add(placed_ ? "CreationTimeStamp" : "EventTime", CimTime{digits + ".000000+000"});
  }

 private:
  // CIM's AlertIndication has an EventID that tells which event it is, not of what kind.
  static std::string nameOf(const FactKey& key) {
    const std::string_view words(key.name.data(), key.size);
    if (words == "event_id") return "EventIDText";
    std::string name;
    for (std::size_t at = 0; at < words.size();) {
      const std::string_view word = words.substr(at, words.find('_', at) - at);
      name += static_cast<char>(word.front() - 'a' + 'A');
      name += word == "id" ? "D" : word.substr(1);
      at += word.size() + 1;
    }
    return name;
  }

  void addFields(std::span<const tool::BodyField> fields) {
    std::vector<String> names;
    std::vector<String> values;
    std::vector<std::string> groups = {""};  // with those around them
    for (const tool::BodyField& field : fields) {
      const std::string name = groups.back() + std::string(field.key);
      switch (field.kind) {
        case tool::BodyField::value:
          names.push_back(xmlSafe(name));
          values.push_back(xmlSafe(field.text));
          break;
        case tool::BodyField::groupBegin:
          groups.push_back(name + ".");
          break;
        case tool::BodyField::groupEnd:
          groups.pop_back();
          break;
      }
    }
    add("FieldNames", std::move(names));
    add("FieldValues", std::move(values));
  }

  void add(std::string name, Property::Value value) {
    properties_.push_back({std::move(name), std::move(value)});
  }

  const bool placed_;
  Properties properties_;
};

template <typename Type>
const Type& valueOf(const Properties& properties, std::string_view name) {
  const auto found =
      std::find_if(properties.begin(), properties.end(),
                   [name](const Property& property) { return property.name == name; });
  return std::get<Type>(found->value);
}

String hostName() {
  std::array<char, 256> name{};
  ::gethostname(name.data(), name.size() - 1);
  return xmlSafeBytes(name.data());
}

}  // namespace

String xmlSafe(std::string_view utf8) {
  constexpr std::string_view replacement = "\xEF\xBF\xBD";
  std::string safe;
  safe.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const auto byte = static_cast<unsigned char>(utf8[at]);
    const std::string_view three = utf8.substr(at, 3);
    if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') {
      safe += replacement;
    } else if (three == "\xEF\xBF\xBE" || three == "\xEF\xBF\xBF") {  // U+FFFE and U+FFFF
      safe += replacement;
      at += 2;
    } else {
      safe += utf8[at];
    }
  }
  return {safe.data(), static_cast<Uint32>(safe.size())};
}

std::string instanceId(std::span<const unsigned char> bytes) {
  const Record record = log::recordOf(bytes);
  std::string id = std::string(kOwner) + ":";
  for (const std::string_view serial :
       {record.enclosureSerialNumber(), record.controllerSerialNumber()}) {
    for (const char byte : serial) {
      const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                         (byte >= 'a' && byte <= 'z') || byte == '-' || byte == '.' || byte == '_';
      if (plain) {
        id += byte;
      } else {
        constexpr const char* digits = "0123456789ABCDEF";
        const auto code = static_cast<unsigned char>(byte);
        id += '%';
        id += digits[code >> 4];
        id += digits[code & 0xF];
      }
    }
    id += ':';
  }
  return id + std::to_string(record.logInstance()) + ":" + std::to_string(record.sequenceId());
}

String xmlSafeBytes(std::string_view bytes) {
  tool::Utf8Text text;
  return xmlSafe(text.assignBytes(bytes));
}

String logInstanceId(const std::string& path) {
  return xmlSafeBytes(std::string(kOwner) + ":" + path);
}

Properties logProperties(const std::string& path, const log::Accounting& read) {
  return {
      {"InstanceID",             logInstanceId(path)      },
      {"Name",                   xmlSafeBytes(path)       },
      {"ElementName",            xmlSafeBytes(path)       },
      {"MaxNumberOfRecords",     Uint64{0}                },
      {"CurrentNumberOfRecords", Uint64{read.events}      },
      {"OverwritePolicy",        Uint16{0}                },
      {"LogState",               Uint16{4}                },
      {"EnabledState",           Uint16{5}                },
      {"RequestedState",         Uint16{12}               },
      {"SkippedBytes",           Uint64{read.skippedBytes}},
      {"PaddingBytes",           Uint64{read.paddingBytes}},
  };
}

Uint16 perceivedSeverity(unsigned eventType) {
  constexpr std::array<Uint16, 4> severities = {0, 2, 3, 5};  // Information, Warning, Major
  return eventType < severities.size() ? severities[eventType] : Uint16{0};
}

EventProperties::EventProperties(std::optional<tool::Moment> epoch)
    : epoch_(epoch), systemName_(hostName()) {}

Properties EventProperties::factsOf(const log::LogUnit& unit, const Place* place) {
  const Pegasus::FieldRecorder fields;
  const std::unique_ptr<Pegasus::Quarn_Event> event = tool::EventDecoder().decode(unit);
  std::optional<tool::Moment> time;
  if (epoch_) time = *epoch_ + event->getTimestamp();
  const auto file = place != nullptr ? std::optional<std::string_view>(place->file) : std::nullopt;
  facts_.read({file, place != nullptr ? place->index : 0, unit.offset, unit.record,
               tool::EventDecoder::className(*event), *event, &fields, time});
  PropertyForm form(place != nullptr);
  facts_.describeEvent(form);
  facts_.describeBody(form);
  facts_.describeRecord(form);
  Properties properties = form.take();
  const String source = valueOf<String>(properties, "Source");
  const String code = ascii(std::to_string(valueOf<Uint32>(properties, "EventCode")));
  const Uint32 type = valueOf<Uint32>(properties, "EventTypeCode");
  const String summary = valueOf<String>(properties, "Summary");
  properties.push_back({"PerceivedSeverity", perceivedSeverity(type)});
  properties.push_back({"MessageID", source + String(":") + code});
  properties.push_back({"Message", summary});
  properties.push_back({"OwningEntity", String(kOwner)});
  return properties;
}

Properties EventProperties::ofEntry(const log::LogUnit& unit, const Place& place) {
  Properties properties = factsOf(unit, &place);
  const String title = valueOf<String>(properties, "EventIDText");
  properties.push_back({"InstanceID", ascii(instanceId(unit.record))});
  properties.push_back({"ElementName", title});
  properties.push_back({"LogInstanceID", logInstanceId(place.log)});
  properties.push_back({"LogName", xmlSafeBytes(place.log)});
  properties.push_back({"RecordID", ascii(std::to_string(unit.offset))});
  return properties;
}

Properties EventProperties::ofAlert(const log::LogUnit& unit) {
  Properties properties = factsOf(unit, nullptr);
  const auto text = [&](const char* name) { return valueOf<String>(properties, name); };
  const Record record = log::recordOf(unit.record);
  const Classification classification =
      classify(record.category(), valueOf<Uint16>(properties, "PerceivedSeverity"));
  const String element = String("enclosure ") + text("EnclosureSerial") + String(", controller ") +
                         text("ControllerSerial") + String(", slot ") +
                         ascii(std::to_string(record.controllerSlot()));
  const String id = ascii(instanceId(unit.record));
  const String category = text("Category");
  const String description = text("EventIDText");
  properties.push_back({"IndicationIdentifier", id});
  properties.push_back({"EventID", id});
  properties.push_back({"Description", description});
  properties.push_back({"AlertingManagedElement", element});
  properties.push_back({"AlertingElementFormat", Uint16{1}});  // Other
  properties.push_back({"OtherAlertingElementFormat", String("enclosure, controller, slot")});
  properties.push_back({"AlertType", classification.alertType});
  if (classification.alertType == kOtherAlertType)
    properties.push_back({"OtherAlertType", category});
  properties.push_back({"ProbableCause", classification.probableCause});
  properties.push_back({"ProbableCauseDescription", category});
  properties.push_back({"SystemCreationClassName", String("CIM_ComputerSystem")});
  properties.push_back({"SystemName", systemName_});
  properties.push_back({"ProviderName", String("MPU_EventAlertProvider")});
  return properties;
}

}  // namespace mpuevent::provider
