#ifndef MPUEVENT_LOG_FOLLOWING_CURSOR_H
#define MPUEVENT_LOG_FOLLOWING_CURSOR_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "log/following/FilePlace.h"
#include "log/framing/LogUnit.h"

namespace mpuevent::log {

/// The place behind an event, or at the beginning of a log: then only the time is something.
struct LogPlace {
  FilePlace file;                 ///< the bytes that it knows are those of the event
  std::uint64_t index = 0;        ///< of the event in its file
  std::uint32_t logInstance = 0;  ///< and so on: of the event
  std::uint32_t sequenceId = 0;
  std::string enclosureSerial;  ///< in the bytes of the record
  std::string controllerSerial;
  std::int64_t time = 0;  ///< when the place was saved, in seconds since 1970; of the beginning:
                          ///< when the log was written to last
};

/// How far somebody has come with a log, kept in a file that is replaced as a whole: whoever dies
/// finds the last place that was saved.
class Cursor {
 public:
  /// Reads the file, if there is one. Throws `std::system_error` if that fails, and
  /// `std::runtime_error` if it is something else.
  explicit Cursor(std::string path);

  /// Where the file says that one had come; nothing if it was not there, or empty.
  const std::optional<LogPlace>& place() const { return place_; }

  /// The event has been dealt with; `offset` is that of its message or record in the file.
  void moveBehind(const LogUnit& unit, std::uint64_t offset, std::uint64_t index);

  /// Makes the file tell of the beginning.
  void saveBeginning(std::int64_t time);

  /// Makes the file tell of the last move, if there was one since the last call. What comes of the
  /// events before should be safe by then. Throws `std::system_error`.
  void save();

 private:
  const std::string path_;
  std::optional<LogPlace> place_;
  bool moved_ = false;
  std::uint64_t end_ = 0;
  std::uint64_t index_ = 0;
  std::size_t recordAt_ = 0;
  std::vector<unsigned char> unit_;  // behind which it is
};

}  // namespace mpuevent::log

#endif
