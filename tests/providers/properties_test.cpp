#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "EventProperties.h"
#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace mpuevent::provider {
namespace {

using support::utf8;

/// The properties that a class of the MOF declares itself, and their types.
std::map<std::string, std::string> declaredBy(const std::string& className) {
  std::ifstream file(MPUEVENT_MOF);
  std::ostringstream text;
  text << file.rdbuf();
  std::string mof = text.str();
  mof.erase(0, mof.find("class " + className + " :"));
  mof.erase(mof.find("\n};"));
  std::map<std::string, std::string> types;
  const std::regex declaration(R"(\n   (\w+) (\w+)(\[\])?;)");
  for (std::sregex_iterator at(mof.begin(), mof.end(), declaration), end; at != end; ++at) {
    types[(*at)[2]] = (*at)[1].str() + (*at)[3].str();
  }
  return types;
}

std::string typeOf(const Property::Value& value) {
  const std::vector<std::string> types = {"uint16", "uint32",   "uint64",
                                          "string", "datetime", "string[]"};
  return types.at(value.index());
}

using Types = std::map<std::string, std::string>;

Types typed(const std::map<std::string, std::string>& namesOfTypes) {
  Types types;
  for (const auto& [type, names] : namesOfTypes) {
    std::istringstream words(names);
    for (std::string name; words >> name;) types[name] = type;
  }
  return types;
}

// What DMTF's classes have of the names that ours set.
const Types ofLogEntry = typed({
    {"uint16",   "PerceivedSeverity"                                                       },
    {"datetime", "CreationTimeStamp"                                                       },
    {"string",
     "InstanceID ElementName LogInstanceID LogName RecordID MessageID Message OwningEntity"},
});
const Types ofAlertIndication = typed({
    {"uint16",   "AlertingElementFormat AlertType PerceivedSeverity ProbableCause"},
    {"datetime", "EventTime"                                                      },
    {"string",
     "IndicationIdentifier EventID Description AlertingManagedElement OtherAlertingElementFormat "
     "OtherAlertType ProbableCauseDescription SystemCreationClassName SystemName ProviderName "
     "MessageID Message OwningEntity"                                             },
});

std::string shown(const Property::Value& value) {
  if (const auto* text = std::get_if<Pegasus::String>(&value)) return utf8(*text);
  if (const auto* time = std::get_if<CimTime>(&value)) return time->text;
  if (const auto* number = std::get_if<Pegasus::Uint16>(&value)) return std::to_string(*number);
  if (const auto* number = std::get_if<Pegasus::Uint32>(&value)) return std::to_string(*number);
  if (const auto* number = std::get_if<Pegasus::Uint64>(&value)) return std::to_string(*number);
  std::string all;
  for (const auto& text : std::get<std::vector<Pegasus::String>>(value)) all += utf8(text) + "\n";
  return all;
}

/// Name to text, after a look at the types; a name may come once.
Types checked(const Properties& properties, const Types& own, const Types& base,
              std::set<std::string>& seen) {
  std::map<std::string, std::string> texts;
  for (const auto& [name, value] : properties) {
    const bool isOwn = own.count(name) != 0;
    EXPECT_TRUE(isOwn || base.count(name) != 0) << name << " is not declared";
    if (isOwn || base.count(name) != 0) {
      EXPECT_EQ(typeOf(value), isOwn ? own.at(name) : base.at(name)) << name;
    }
    EXPECT_TRUE(texts.emplace(name, shown(value)).second) << name << " comes twice";
    seen.insert(name);
  }
  return texts;
}

// The two characters that samples have and XML has not.
std::string allowed(std::string text) {
  return std::regex_replace(text, std::regex("[\x03\x01]"), "\xEF\xBF\xBD");
}

std::vector<unsigned char> bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

TEST(EventProperties, AreDeclaredAndTellTheFactsOfEverySample) {
  const auto entryTypes = declaredBy("MPU_EventLogEntry");
  const auto alertTypes = declaredBy("MPU_EventAlert");
  std::set<std::string> inEntries;
  std::set<std::string> inAlerts;
  EventProperties properties(1700000000);
  const std::string file = "/logs/a\x01.cmap";
  for (const samples::Module& module : samples::modules()) {
    for (const samples::Sample& sample : module.samples()) {
      const std::string record =
          samples::record(module, sample).timestamp(86407).sequenceId(0xF1020304).str();
      const auto event = support::decode(record);
      const auto bytes = bytesOf(record);
      const log::LogUnit unit{0x123456789A, nullptr, bytes};
      const auto entry = checked(properties.ofEntry(unit, {file, file, 0x100000002}), entryTypes,
                                 ofLogEntry, inEntries);
      const auto alert = checked(properties.ofAlert(unit), alertTypes, ofAlertIndication, inAlerts);
      const std::map<std::string, std::string> facts = {
          {"EnclosureSerial",  utf8(event->getEnclosureSerialNumber())                   },
          {"ControllerSerial", utf8(event->getControllerSerialNumber())                  },
          {"ControllerSlot",   std::to_string(event->getControllerSlotID())              },
          {"LogInstance",      std::to_string(event->getEventLogInstanceNumber())        },
          {"SequenceID",       "4043440900"                                              },
          {"Timestamp",        "86407"                                                   },
          {"SourceCode",       std::to_string(module.source)                             },
          {"Source",           utf8(event->getSource())                                  },
          {"Category",         utf8(event->getCategory())                                },
          {"EventType",        utf8(event->getEventType())                               },
          {"EventCode",        std::to_string(sample.id)                                 },
          {"EventIDText",      allowed(utf8(event->getEventID()))                        },
          {"Summary",          allowed(utf8(event->getSummary()))                        },
          {"Body",             allowed(utf8(event->getBody()))                           },
          {"RecordLength",     std::to_string(record.size())                             },
          {"Message",          allowed(utf8(event->getSummary()))                        },
          {"MessageID",        utf8(event->getSource()) + ":" + std::to_string(sample.id)},
      };
      for (const auto& [name, fact] : facts) {
        EXPECT_EQ(entry.at(name), fact) << module.name << " " << name;
        EXPECT_EQ(alert.at(name), fact) << module.name << " " << name;
      }
      EXPECT_EQ(entry.at("Index"), "4294967298");
      EXPECT_EQ(entry.at("Offset"), "78187493530");
      EXPECT_EQ(entry.at("CreationTimeStamp"), "20231115221327.000000+000");
      EXPECT_EQ(alert.at("EventTime"), "20231115221327.000000+000");
      EXPECT_EQ(entry.at("InstanceID"), "MPU:ENC-0815-3307:CTL-0426-1189:3:4043440900");
      EXPECT_EQ(alert.at("EventID"), entry.at("InstanceID"));
      EXPECT_EQ(entry.at("LogInstanceID"), "MPU:/logs/a\xEF\xBF\xBD.cmap");
    }
  }
  for (const auto& [name, type] : entryTypes) EXPECT_EQ(inEntries.count(name), 1U) << name;
  for (const auto& [name, type] : alertTypes) EXPECT_EQ(inAlerts.count(name), 1U) << name;
}

TEST(EventProperties, ClassifyByTypeAndCategory) {
  struct Case {
    std::uint8_t type, category;
    const char* told;  // severity, alert type, probable cause
  };
  const Case cases[] = {
      {1, 9,  "2 2 0" }, // information has no cause
      {2, 9,  "3 2 7" },
      {3, 9,  "5 2 7" },
      {3, 1,  "5 4 47"},
      {2, 3,  "3 6 16"},
      {3, 11, "5 5 24"},
      {3, 13, "5 2 7" },
      {4, 13, "0 2 0" },
      {3, 14, "5 1 0" },
      {3, 0,  "5 1 0" },
  };
  EventProperties properties(std::nullopt);
  for (const Case& one : cases) {
    const auto record =
        bytesOf(support::RecordBuilder().type(one.type).category(one.category).str());
    std::set<std::string> seen;
    const auto alert = checked(properties.ofAlert({0, nullptr, record}),
                               declaredBy("MPU_EventAlert"), ofAlertIndication, seen);
    EXPECT_EQ(alert.at("PerceivedSeverity") + " " + alert.at("AlertType") + " " +
                  alert.at("ProbableCause"),
              one.told)
        << int{one.type} << " " << int{one.category};
    EXPECT_EQ(alert.count("EventTime"), 0U);  // the epoch is not known
    EXPECT_EQ(alert.count("OtherAlertType"), one.category == 14 || one.category == 0 ? 1U : 0U);
  }
}

TEST(EventProperties, HoldNoCharacterThatXmlForbids) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const auto code = static_cast<Pegasus::Uint16>(unit);
    if (code >= 0xD800 && code <= 0xDFFF) continue;  // half a pair is no UTF-8
    const Pegasus::Char16 text[] = {'a', code, 'b'};
    const Pegasus::String safe = xmlSafe(utf8(Pegasus::String(text, 3)));
    const bool isChar =
        code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code < 0xFFFE);
    ASSERT_EQ(safe.size(), 3U) << unit;
    ASSERT_EQ(Pegasus::Uint16{safe[1]}, isChar ? code : 0xFFFD) << unit;
  }
  EXPECT_EQ(utf8(xmlSafe("\xF0\x9F\x98\x80\x1B")), "\xF0\x9F\x98\x80\xEF\xBF\xBD");
}

TEST(EventProperties, KeysOfDifferentSerialsDiffer) {
  const auto idOf = [](std::string_view enclosure, std::string_view controller) {
    const auto record = bytesOf(support::RecordBuilder()
                                    .enclosureSerial(enclosure)
                                    .controllerSerial(controller)
                                    .sequenceId(0xFFFFFFFF)
                                    .str());
    return instanceId(record);
  };
  EXPECT_EQ(idOf("A:b\xE9", " %"), "MPU:A%3Ab%E9:%20%25:3:4294967295");
  EXPECT_NE(idOf("A:", "b"), idOf("A", ":b"));
  EXPECT_NE(idOf("\x01", ""), idOf("\x02", ""));
}

}  // namespace
}  // namespace mpuevent::provider
