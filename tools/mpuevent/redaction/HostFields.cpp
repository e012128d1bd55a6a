#include "redaction/HostFields.h"

#include <MPUEvent/FieldRecorder.h>

#include <algorithm>
#include <memory>
#include <string_view>

#include "EventDecoder.h"
#include "forms/BodyFields.h"
#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::tool {

namespace {

constexpr unsigned kIscsiSource = 22;
constexpr unsigned kIsnsSource = 31;

constexpr std::string_view kNames[] = {"InitiatorName", "TargetName", "src_node_id",
                                       "src_node_alias"};
constexpr std::string_view kAddresses[] = {"Target_IP_Address", "Initiator_IP_Address",
                                           "isns_server_ip", "isns_heartbeat_ip"};
// A parameter of one of these names has the name of a host as its value.
constexpr std::string_view kParameters[] = {"InitiatorName", "InitiatorAlias", "TargetName",
                                            "TargetAlias", "TargetAddress"};

template <std::size_t count>
bool isOneOf(std::string_view key, const std::string_view (&keys)[count]) {
  return std::find(std::begin(keys), std::end(keys), key) != std::end(keys);
}

// As the decoder that makes texts safe shows it.
std::string safe(const std::string& text) {
  Utf8Text utf8;
  const int length = static_cast<int>(text.size());
  return std::string(
      std::string_view(utf8.assign(Pegasus::Quarn_Event::makeSafeString(text.c_str(), length))));
}

// The text of the payload that is shown so.
std::string rawOf(std::string_view shown, std::string_view payload) {
  while (!payload.empty() && shown.find('\\') != std::string_view::npos) {
    const std::size_t end = std::min(payload.find('\0'), payload.size());
    std::string text(payload.substr(0, end));
    if (!text.empty() && safe(text) == shown) return text;
    payload.remove_prefix(std::min(end + 1, payload.size()));
  }
  return std::string(shown);
}

}  // namespace

HostFields hostFieldsOf(const log::LogUnit& unit) {
  HostFields found;
  const Record record = log::recordOf(unit.record);
  if (record.source() != kIscsiSource && record.source() != kIsnsSource) return found;
  const Pegasus::FieldRecorder recorder;
  const std::unique_ptr<Pegasus::Quarn_Event> event = EventDecoder::decode(unit);
  const Pegasus::String body = event->getBody();
  Utf8Text utf8;
  const BodyFields fields(recorder, utf8.assign(body), body.size());
  std::string_view parameter;
  fields.forEach([&](const BodyField& field) {
    const std::string_view key = field.key;
    const std::string_view text = field.text;
    if (key == "Parameter") parameter = text;
    if (isOneOf(key, kAddresses)) {
      if (const auto address = parseAddress(text)) found.addresses.push_back(*address);
    } else if (key.starts_with("Value") && isOneOf(parameter, kParameters)) {
      // An address may have a port and a group behind it.
      const std::string_view host =
          parameter == "TargetAddress" ? text.substr(0, text.find_first_of(":,[")) : text;
      if (!parseAddress(host)) found.names.emplace_back(host);
    } else if (isOneOf(key, kNames)) {
      found.names.push_back(rawOf(text, record.payload().bytes(0)));
    }
  });
  return found;
}

}  // namespace mpuevent::tool
