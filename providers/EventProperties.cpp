#include "EventProperties.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "EventDecoder.h"
#include "event/HexDigits.h"
#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::provider {

namespace {

using Pegasus::String;
using Pegasus::Uint16;
using Pegasus::Uint32;
using Pegasus::Uint64;

constexpr const char* kOwner = "MPU";

/// What CIM says of the alerts of a category.
struct Classification {
  Uint16 alertType;      // 2 communications, 4 processing, 5 device, 6 environmental
  Uint16 probableCause;  // of errors and warnings
};
constexpr Uint16 kOtherAlertType = 1;
constexpr Uint16 kOtherFormat = 1;
constexpr Uint16 kUnknownCause = 0;
constexpr Uint16 kWarning = 3;  // a severity

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

// `event_type_code` is EventTypeCode. CIM's AlertIndication has an EventID that tells which event
// it is, not of what kind.
std::string cimName(std::string_view key) {
  if (key == "event_id") return "EventIDText";
  std::string name;
  while (!key.empty()) {
    const std::string_view word = key.substr(0, key.find('_'));
    name += static_cast<char>(word.front() - 'a' + 'A');
    name += word == "id" ? "D" : word.substr(1);
    key.remove_prefix(std::min(key.size(), word.size() + 1));
  }
  return name;
}

/// Adds a fact as a property of that name, or two; none for what the event has not.
struct FactAdder {
  Properties& to;
  std::string name;

  void operator()(std::monostate) const {}
  void operator()(std::uint64_t number) const {
    const bool isPlace = name == "Index" || name == "Offset";
    add(isPlace ? Property::Value(Uint64{number}) : static_cast<Uint32>(number));
  }
  void operator()(std::string_view utf8) const { add(xmlSafe(utf8)); }
  void operator()(std::span<const unsigned char> bytes) const {
    add(Pegasus::Quarn_Event::hexifiedString(reinterpret_cast<const char*>(bytes.data()),
                                             static_cast<long>(bytes.size())));
  }
  void operator()(const tool::BodyFields* fields) const {
    std::vector<String> names;
    std::vector<String> values;
    std::vector<std::string> groups = {""};  // with those around them
    fields->forEach([&](const tool::BodyField& field) {
      const std::string key = groups.back() + std::string(field.key);
      if (field.kind == tool::BodyField::value) {
        names.push_back(xmlSafe(key));
        values.push_back(xmlSafe(field.text));
      } else if (field.kind == tool::BodyField::groupBegin) {
        groups.push_back(key + ".");
      } else {
        groups.pop_back();
      }
    });
    to.push_back({"FieldNames", std::move(names)});
    to.push_back({"FieldValues", std::move(values)});
  }

 private:
  void add(Property::Value value) const { to.push_back({name, std::move(value)}); }
};

/// `2023-11-15T22:13:27Z`
CimTime cimTime(std::string_view date) {
  std::string digits(date);
  std::erase_if(digits, [](char c) { return c < '0' || c > '9'; });
  return {digits + ".000000+000"};
}

/// By name the texts that each event has.
auto textsOf(const Properties& properties) {
  return [&properties](std::string_view name) -> const String& {
    const auto isNamed = [name](const Property& property) { return property.name == name; };
    return std::get<String>(std::find_if(properties.begin(), properties.end(), isNamed)->value);
  };
}

String hostName() {
  std::array<char, 256> name{};
  ::gethostname(name.data(), name.size() - 1);
  return xmlSafeBytes(name.data());
}

}  // namespace

String xmlSafe(std::string_view utf8) {
  String text(utf8.data(), static_cast<Uint32>(utf8.size()));
  for (Uint32 at = 0; at < text.size(); ++at) {
    const Uint16 unit = std::as_const(text)[at];
    const bool isControl = unit < 0x20 && unit != '\t' && unit != '\n' && unit != '\r';
    if (isControl || unit >= 0xFFFE) text[at] = 0xFFFD;
  }
  return text;
}

std::string instanceId(std::span<const unsigned char> bytes) {
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._";
  const Record record = log::recordOf(bytes);
  std::string id = std::string(kOwner) + ":";
  for (const std::string_view serial :
       {record.enclosureSerialNumber(), record.controllerSerialNumber()}) {
    for (const char byte : serial) {
      const auto& [high, low] = hexPairs[static_cast<unsigned char>(byte)];
      id += plain.find(byte) != std::string_view::npos ? std::string{byte}
                                                       : std::string{'%', high, low};
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
  const std::unique_ptr<Pegasus::Quarn_Event> event = tool::EventDecoder::decode(unit);
  std::optional<tool::Moment> time;
  if (epoch_) time = *epoch_ + event->getTimestamp();
  const auto file = place != nullptr ? std::optional<std::string_view>(place->file) : std::nullopt;
  facts_.read({file, place != nullptr ? place->index : 0, unit.offset, unit.record,
               tool::EventDecoder::className(log::headerOf(unit.record).source()), *event, &fields,
               time});
  row_.read(facts_);
  Properties properties;
  for (const auto& [key, value] : row_.facts()) {
    const std::string_view name(key->name.data(), key->size);
    if (place == nullptr && (name == "index" || name == "offset")) continue;
    if (name != "time") {
      std::visit(FactAdder{properties, cimName(name)}, value);
    } else if (const auto* date = std::get_if<std::string_view>(&value)) {
      properties.push_back({place != nullptr ? "CreationTimeStamp" : "EventTime", cimTime(*date)});
    }
  }
  const auto text = textsOf(properties);
  const Record record = log::recordOf(unit.record);
  const std::string code = ":" + std::to_string(record.id());
  properties.insert(properties.end(), {
                                          {"PerceivedSeverity", perceivedSeverity(record.type())     },
                                          {"MessageID",         text("Source") + String(code.c_str())},
                                          {"Message",           text("Summary")                      },
                                          {"OwningEntity",      String(kOwner)                       },
  });
  return properties;
}

Properties EventProperties::ofEntry(const log::LogUnit& unit, const Place& place) {
  Properties properties = factsOf(unit, &place);
  const auto text = textsOf(properties);
  const std::string offset = std::to_string(unit.offset);
  properties.insert(properties.end(), {
                                          {"InstanceID",    String(instanceId(unit.record).c_str())},
                                          {"ElementName",   text("EventIDText")                    },
                                          {"LogInstanceID", logInstanceId(place.log)               },
                                          {"LogName",       xmlSafeBytes(place.log)                },
                                          {"RecordID",      String(offset.c_str())                 },
  });
  return properties;
}

Properties EventProperties::ofAlert(const log::LogUnit& unit) {
  Properties properties = factsOf(unit, nullptr);
  const auto text = textsOf(properties);
  const Record record = log::recordOf(unit.record);
  const String id(instanceId(unit.record).c_str());
  const auto& [alertType, cause] =
      kByCategory[record.category() < std::size(kByCategory) ? record.category() : 0];
  const bool hasCause = perceivedSeverity(record.type()) >= kWarning;
  const std::string slot = ", slot " + std::to_string(record.controllerSlot());
  const String element = String("enclosure ") + text("EnclosureSerial") + String(", controller ") +
                         text("ControllerSerial") + String(slot.c_str());
  if (alertType == kOtherAlertType) properties.push_back({"OtherAlertType", text("Category")});
  properties.insert(properties.end(),
                    {
                        {"IndicationIdentifier",       id                                   },
                        {"EventID",                    id                                   },
                        {"Description",                text("EventIDText")                  },
                        {"AlertingManagedElement",     element                              },
                        {"AlertingElementFormat",      kOtherFormat                         },
                        {"OtherAlertingElementFormat", String("enclosure, controller, slot")},
                        {"AlertType",                  alertType                            },
                        {"ProbableCause",              hasCause ? cause : kUnknownCause     },
                        {"ProbableCauseDescription",   text("Category")                     },
                        {"SystemCreationClassName",    String("CIM_ComputerSystem")         },
                        {"SystemName",                 systemName_                          },
                        {"ProviderName",               String("MPU_EventAlertProvider")     },
  });
  return properties;
}

}  // namespace mpuevent::provider
