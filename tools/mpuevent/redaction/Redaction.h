#ifndef MPUEVENT_TOOL_REDACTION_H
#define MPUEVENT_TOOL_REDACTION_H

#include <MPUEvent/Quarn_Event.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "forms/TextBuffer.h"
#include "log/framing/LogUnit.h"
#include "redaction/Identities.h"
#include "redaction/TextIndex.h"

namespace mpuevent::tool {

/// Keeps from readers whose logs they read: serials of enclosures and controllers, names and
/// addresses of hosts. First it is shown all records (learn()); then it gives each with
/// placeholders of the same length in place of these bytes, so that whatever is made of the record
/// does not tell them either (redact()); and puts what a placeholder stands for, "enclosure-1",
/// into the text that was made (name()).
///
/// Known are the serials in the records' headers, what the iSCSI decoders show as names and
/// addresses, and what looks like an iSCSI name or an address in any payload. They are looked for
/// as bytes of a text, in any case of letters, and addresses also as the 4 or 16 bytes that they
/// are. A text of less than four bytes is replaced where it is a word.
///
/// Memory grows with the number of different identities.
class Redaction {
 public:
  /// What a redacted header has for a serial: for people, or for another log.
  enum class Serials { named, sameLength };

  explicit Redaction(Serials serials) : serials_(serials) {}
  Redaction(const Redaction&) = delete;
  Redaction& operator=(const Redaction&) = delete;

  void learn(const log::LogUnit& unit);

  /// The unit without what was learnt of it and of all before. Valid until the next call of either.
  log::LogUnit redact(const log::LogUnit& unit);
  /// The same of its header alone: nothing is behind that.
  log::LogUnit redactHeader(const log::LogUnit& unit);

  /// Names what placeholders stand for in what was appended to the text since it had `from` bytes.
  void name(TextBuffer& text, std::size_t from) const;
  std::string named(std::string_view text) const;
  /// In the Summary and the event id.
  void name(Pegasus::Quarn_Event& event) const;

 private:
  enum Kind : std::size_t { enclosure, controller, host, address };
  static constexpr std::size_t kinds = 4;

  struct Identity {
    Kind kind;
    std::size_t number;  // of its kind, from 1
  };
  using Number = std::uint32_t;  // in identities_

  Number identify(Kind kind, const std::string& bytes);
  Number identifySerial(Kind kind, std::string_view text);
  Number identifyAddress(const AddressBytes& bytes);
  void identifyHost(std::string_view text);
  void addText(std::string_view text, Number number);

  void learnFields(const log::LogUnit& unit);
  void redactSerial(std::size_t at, Kind kind);
  void redactBytes(std::size_t begin, std::size_t end);
  void redactShownAddresses(const log::LogUnit& unit);
  void replace(std::size_t at, std::string_view by);
  std::size_t take(const log::LogUnit& unit, std::size_t recordSize);

  std::string nameOf(Number number) const;
  const std::string& placeholder(Number number, std::size_t length);
  std::string makePlaceholder(Number number, std::size_t length) const;
  std::string addressPlaceholder(Number number, std::size_t length);

  const Serials serials_;
  std::vector<Identity> identities_;
  std::array<std::unordered_map<std::string, Number>, kinds> known_;
  TextIndex texts_{true};
  TextIndex addresses_{false};   // as bytes
  bool untellingShown_ = false;  // events show addresses that are not looked for as bytes
  std::vector<unsigned char> bytes_;
  std::map<std::pair<Number, std::size_t>, std::string> placeholders_;  // by length
  TextIndex named_{false};
};

}  // namespace mpuevent::tool

#endif
