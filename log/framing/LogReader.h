#ifndef MPUEVENT_LOG_FRAMING_LOGREADER_H
#define MPUEVENT_LOG_FRAMING_LOGREADER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

#include "log/input/InputWindow.h"

namespace mpuevent::log {

/// How a log file is laid out.
enum class LogForm {
  automatic,  ///< one of the two below, told apart by whether the lengths chain
  messages,   ///< back to back: a 64-byte CMAP header and the record that it carries
  records,    ///< back to back: raw records, each of 152 + `evStructLength` bytes
};

/// One record of a log. The bytes are the reader's and valid until it is asked for the next one.
struct LogUnit {
  std::uint64_t offset = 0;  ///< of the message or record in the input
  const unsigned char* header =
      nullptr;  ///< the 64 bytes before the record; null if there are none
  std::span<const unsigned char> record;  ///< 152 bytes or more
};

/// Takes a log apart into records, in one pass, in constant memory and in linear time whatever the
/// bytes. Damage is reported and passed over.
///
/// A message "agrees" if its total length is the one that its record's `evStructLength` gives. One
/// that does not agree is still a message: agreement only serves to find the next good message
/// where the lengths do not lead to one.
class LogReader {
 public:
  using ReportDamage = std::function<void(std::uint64_t offset, std::string_view reason)>;

  LogReader(ReadBytes read, LogForm form, ReportDamage report);

  /// False when there is no further record.
  bool next(LogUnit& unit);

  /// Bytes passed so far; after the last record, the size of the input.
  std::uint64_t offset() const { return window_.offset(); }
  /// The errno value of the read that failed and so ended the input, or 0.
  int readError() const { return window_.error(); }

 private:
  LogForm recognise();
  bool nextRecord(LogUnit& unit);
  bool nextMessage(LogUnit& unit);
  void take(LogUnit& unit, std::size_t headerLength, std::size_t length);
  bool passTail(std::size_t needed, std::string_view what);
  bool passBrokenMessage(std::size_t length);
  bool recordLengthIsBetter(std::size_t length, std::size_t own);

  // These look at what begins `distance` bytes after the position.
  std::size_t numberAt(std::size_t distance) const;
  std::size_t ownLengthAt(std::size_t distance);
  bool agreesAt(std::size_t distance);
  bool endsAt(std::size_t distance);
  bool leadsOnAt(std::size_t distance) { return endsAt(distance) || agreesAt(distance); }
  bool soundAt(std::size_t distance);
  std::optional<std::size_t> findSound(std::size_t begin, std::size_t end);

  InputWindow window_;
  LogForm form_;
  ReportDamage report_;
  std::size_t taken_ = 0;  // length of the unit given out last, which is still in view
};

}  // namespace mpuevent::log

#endif
