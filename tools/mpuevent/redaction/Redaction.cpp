#include "redaction/Redaction.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>

#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"
#include "redaction/HostFields.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kMessageHeader = 64;
constexpr std::size_t kSerialSize = 64;
constexpr std::size_t kTotalLengthAt = 10;  // two bytes of a message header

// In a short placeholder. One that no decoder escapes.
constexpr char kMark = '#';

constexpr std::string_view kWords[] = {"enclosure", "controller", "host", "address"};

std::string_view viewOf(const std::vector<unsigned char>& bytes) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): any bytes may be read as char.
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

// Each byte as the Latin-1 character of its number, in UTF-8.
std::string fromLatin1(std::string_view bytes) {
  std::string utf8;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x80) utf8 += static_cast<char>(0xC0 | byte >> 6);
    utf8 += static_cast<char>(byte >= 0x80 ? 0x80 | (byte & 0x3F) : byte);
  }
  return utf8;
}

// The bytes of which that was made, if it was.
std::string toLatin1(std::string_view utf8) {
  std::string bytes;
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    if (lead >= 0x80 && (lead < 0xC2 || lead > 0xC3 || ++at == utf8.size())) return {};
    const auto last = static_cast<unsigned char>(utf8[at]);
    bytes += static_cast<char>(lead < 0x80 ? lead : ((lead & 3) << 6) | (last & 0x3F));
  }
  return bytes;
}

}  // namespace

void Redaction::learn(const log::LogUnit& unit) {
  const Record record = log::recordOf(unit.record);
  identifySerial(enclosure, record.enclosureSerialNumber());
  identifySerial(controller, record.controllerSerialNumber());
  learnFields(unit);
  const std::string_view payload = record.payload().bytes(0);
  forEachIscsiName(payload, [this](std::string_view name) { identifyHost(name); });
  forEachAddress(payload, [&](const WrittenAddress& written) {
    if (!written.isWord) return;
    addText(payload.substr(written.at, written.length), identifyAddress(written.address));
  });
}

void Redaction::learnFields(const log::LogUnit& unit) {
  const HostFields fields = hostFieldsOf(unit);
  for (const std::string& name : fields.names) identifyHost(name);
  for (const AddressBytes& bytes : fields.addresses) {
    identifyAddress(bytes);
    untellingShown_ = untellingShown_ || !isTelling(bytes);
  }
}

Redaction::Number Redaction::identify(Kind kind, const std::string& bytes) {
  const auto next = static_cast<Number>(identities_.size());
  const auto [known, isNew] = known_[kind].try_emplace(bytes, next);
  if (isNew) identities_.push_back({kind, known_[kind].size()});
  return known->second;
}

Redaction::Number Redaction::identifySerial(Kind kind, std::string_view text) {
  const std::size_t before = identities_.size();
  const Number number = identify(kind, std::string(text));
  if (identities_.size() != before) addText(text, number);
  return number;
}

Redaction::Number Redaction::identifyAddress(const AddressBytes& bytes) {
  const std::size_t before = identities_.size();
  const Number number = identify(address, bytes);
  if (identities_.size() != before && isTelling(bytes)) addresses_.add(bytes, number);
  return number;
}

void Redaction::identifyHost(std::string_view text) {
  if (text.empty()) return;
  std::string folded(text);
  for (char& c : folded) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  addText(text, identify(host, folded));
}

// In each of the ways in which it may have been written.
void Redaction::addText(std::string_view text, Number number) {
  texts_.add(text, number);
  if (!isAscii(text)) {
    texts_.add(fromLatin1(text), number);
    texts_.add(toLatin1(text), number);
  }
  const auto isPlain = [](char c) {
    return c > ' ' && c != '=' && c != '\\' && c != '<' && c != ';';
  };
  if (std::all_of(text.begin(), text.end(), isPlain)) return;
  Utf8Text utf8;
  const std::string bytes(text);
  texts_.add(utf8.assign(Pegasus::Quarn_Event::makeSafeString(bytes.c_str(),
                                                              static_cast<int>(bytes.size()))),
             number);
}

std::size_t Redaction::take(const log::LogUnit& unit, std::size_t recordSize) {
  const std::size_t recordAt = unit.header == nullptr ? 0 : kMessageHeader;
  bytes_.assign(unit.header, unit.header == nullptr ? nullptr : unit.header + kMessageHeader);
  const auto record = unit.record.first(recordSize);
  bytes_.insert(bytes_.end(), record.begin(), record.end());
  if (recordAt != 0) {
    redactBytes(0, kTotalLengthAt);
    redactBytes(kTotalLengthAt + 2, kMessageHeader);
  }
  redactSerial(recordAt, enclosure);
  redactSerial(recordAt + kSerialSize, controller);
  return recordAt;
}

log::LogUnit Redaction::redactHeader(const log::LogUnit& unit) {
  const std::size_t recordAt = take(unit, Record::headerSize);
  return {unit.offset, recordAt == 0 ? nullptr : bytes_.data(),
          std::span(bytes_).subspan(recordAt)};
}

log::LogUnit Redaction::redact(const log::LogUnit& unit) {
  const std::size_t recordAt = take(unit, unit.record.size());
  if (untellingShown_) redactShownAddresses(unit);
  redactBytes(recordAt + Record::headerSize, bytes_.size());
  return {unit.offset, recordAt == 0 ? nullptr : bytes_.data(),
          std::span(bytes_).subspan(recordAt)};
}

// What stands behind the NUL may be left of another serial.
void Redaction::redactSerial(std::size_t at, Kind kind) {
  const std::string_view field = viewOf(bytes_).substr(at, kSerialSize);
  const std::string serial(field.substr(0, field.find('\0')));
  std::string by;
  if (!serial.empty()) {
    const Number number = identifySerial(kind, serial);
    by = serials_ == Serials::named ? nameOf(number) : placeholder(number, serial.size());
  }
  by.resize(kSerialSize, '\0');
  replace(at, by);
}

void Redaction::replace(std::size_t at, std::string_view by) {
  std::memcpy(&bytes_[at], by.data(), by.size());
}

void Redaction::redactBytes(std::size_t begin, std::size_t end) {
  const std::string original(viewOf(bytes_).substr(begin, end - begin));
  std::vector<WrittenAddress> written;
  forEachAddress(original, [&written](const WrittenAddress& one) { written.push_back(one); });
  auto next = written.begin();
  for (std::size_t at = 0; at < original.size();) {
    while (next != written.end() && next->at < at) ++next;
    if (next != written.end() && next->at == at &&
        (next->isWord || known_[address].contains(next->address))) {
      replace(begin + at, placeholder(identifyAddress(next->address), next->length));
      at += next->length;
    } else if (const auto text = texts_.at(original, at)) {
      replace(begin + at, placeholder(text->number, text->length));
      at += text->length;
    } else if (const auto bytes = addresses_.at(original, at)) {
      replace(begin + at, addressPlaceholder(bytes->number, bytes->length));
      at += bytes->length;
    } else {
      ++at;
    }
  }
}

// In the words of the event that shows them.
void Redaction::redactShownAddresses(const log::LogUnit& unit) {
  const std::size_t payloadAt = bytes_.size() - unit.record.size() + Record::headerSize;
  for (const AddressBytes& shown : hostFieldsOf(unit).addresses) {
    if (isTelling(shown) || shown == AddressBytes(4, '\0')) continue;
    const std::string by = addressPlaceholder(identifyAddress(shown), shown.size());
    for (std::size_t at = payloadAt; at + shown.size() <= bytes_.size(); at += shown.size()) {
      if (viewOf(bytes_).substr(at, shown.size()) == shown) replace(at, by);
    }
  }
}

std::string Redaction::nameOf(Number number) const {
  const Identity& identity = identities_[number];
  return std::string(kWords[identity.kind]) + "-" + std::to_string(identity.number);
}

const std::string& Redaction::placeholder(Number number, std::size_t length) {
  const auto [known, isNew] = placeholders_.try_emplace({number, length});
  if (isNew) {
    known->second = makePlaceholder(number, length);
    named_.add(known->second, number);
  }
  return known->second;
}

// The name with zeros in it, or of a short one a letter and digits; without what must not be told.
std::string Redaction::makePlaceholder(Number number, std::size_t length) const {
  constexpr std::string_view digits = "0123456789abcdefghijklmnopqrstuvwxyz";
  const Identity& identity = identities_[number];
  const std::string decimal = std::to_string(identity.number);
  for (const char fill : {'0', 'x', 'q', '_'}) {
    std::string text(kWords[identity.kind]);
    text += '-';
    if (text.size() + decimal.size() <= length) {
      text.append(length - text.size() - decimal.size(), fill);
      text += decimal;
    } else {
      text.assign(length, fill);
      std::size_t left = identity.number;
      for (std::size_t at = length; at > 0 && left != 0; left /= digits.size()) {
        text[--at] = digits[left % digits.size()];
      }
      if (length > 2) text[0] = kWords[identity.kind][0];
      if (length != 2) text[length > 2 ? 1 : 0] = kMark;
    }
    if (!texts_.anyIn(text)) return text;
  }
  return std::string(length, kMark);
}

// Addresses that no host has: in 240.0.0.0/4 and 100::/64.
std::string Redaction::addressPlaceholder(Number number, std::size_t length) {
  const std::size_t count = identities_[number].number;
  std::string bytes(length, '\0');
  for (std::size_t at = 0; at < 3; ++at) {
    bytes[length - 1 - at] = static_cast<char>(static_cast<unsigned char>(count >> 8 * at));
  }
  bytes[0] = length == 4 ? '\xF0' : '\1';
  while (addresses_.at(bytes, 0) && bytes[0] != '\xFE') ++bytes[0];
  if (length != 4) return bytes;
  std::string dotted;
  std::string hex;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    constexpr std::string_view digits = "0123456789ABCDEF";
    dotted += (dotted.empty() ? "" : ".") + std::to_string(byte);
    hex += {digits[byte >> 4], digits[byte & 0xF]};
  }
  named_.add(dotted, number);
  named_.add(hex + " (hex)", number);
  return bytes;
}

std::string Redaction::named(std::string_view text) const {
  std::string result;
  std::size_t done = 0;
  for (std::size_t at = 0; at < text.size();) {
    const auto match = named_.at(text, at);
    if (!match) {
      ++at;
      continue;
    }
    result.append(text.substr(done, at - done)).append(nameOf(match->number));
    done = at += match->length;
  }
  return result.append(text.substr(done));
}

void Redaction::name(TextBuffer& text, std::size_t from) const {
  const std::string result = named(text.view().substr(from));
  text.advanceTo(text.view().data() + from);
  text += result;
}

void Redaction::name(Pegasus::Quarn_Event& event) const {
  const auto name = [this](const Pegasus::String& text) {
    Utf8Text utf8;
    const std::string result = named(utf8.assign(text));
    return Pegasus::String(result.data(), static_cast<Pegasus::Uint32>(result.size()));
  };
  event.setSummary(name(event.getSummary()));
  event.setEventID(name(event.getEventID()));
}

}  // namespace mpuevent::tool
