#ifndef MPUEVENT_LOG_FOLLOWING_FOLLOWEDFILE_H
#define MPUEVENT_LOG_FOLLOWING_FOLLOWEDFILE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "log/following/LogPart.h"

namespace mpuevent::log {

/// A file that another program goes on writing to, read part after part: what is there and what is
/// still to come, then, when it was rotated away or truncated, what came in its place. Each part is
/// a log for itself, for a reader of its own:
///
///     FollowedFile file("array.cmap", true, isStopped);
///     if (place) file.beginBehind(*place);
///     while (file.next()) readLog(file.begin(), ...);  // with read(), idle() and readAt()
///
/// The rest of a file that was renamed is read before the new one, and so is that of one that was
/// copied and truncated, if its copy is beside it. A new file counts when something is in it. It
/// looks for more four times a second. A FIFO can be followed as well: it is one part without end.
class FollowedFile {
 public:
  /// `isStopped` is asked while it waits, and ends everything. If it is not to wait it ends where
  /// the file ends.
  FollowedFile(std::string name, bool waits, std::function<bool()> isStopped);

  /// To be called first, if at all: what is before the place has been read, in the file or in one
  /// that was rotated away; then what came after that one is read, too. False if the bytes before
  /// the place are nowhere, or none: then all is read that was written to at `since` or later.
  bool beginBehind(const FilePlace& place, std::int64_t since);

  /// For who has no place yet: the `since` with which all that is there now is found again, however
  /// it is rotated. In seconds since 1970.
  std::int64_t beginning() const;

  /// Opens what is to be read next, waiting for it. False if nothing is, or stopped.
  bool next();
  /// Where in its file the part that is open begins.
  std::uint64_t begin() const { return part_->begin.offset; }

  /// As ReadBytes; waits. 0: the part has ended, or isStopped() says so.
  long read(unsigned char* to, std::size_t room);
  /// As IsIdle: nothing more is there for now. Waits a moment, so that a program that is writing is
  /// not taken for one that has stopped.
  bool idle() const;
  /// As ReadBytesAt, counted from the beginning of the part.
  long readAt(std::uint64_t offset, unsigned char* to, std::size_t room) const;

 private:
  struct Part {
    LogPart file;
    FilePlace begin = {};
    bool isRotated = true;  // away: it will not grow any more
  };

  void open(Part part);
  void queueUnseen();
  bool isSeen(const struct stat& status) const;
  // Whether the file that is read was copied and is not what the copy is any more.
  bool wasCopied();
  bool isReplaced() const;
  bool isAtEnd() const;
  FilePlace here() const;
  long readHere(unsigned char* to, std::size_t room) const;
  void remember(std::span<const unsigned char> bytes);
  // Whether the bytes before the position are still those that were read.
  bool isStillTheSame();
  // In the copy that was made before the file was truncated; false if there is none.
  bool goOnInCopy();
  bool pause() const;

  const std::string name_;
  const bool waits_;
  const std::function<bool()> isStopped_;
  std::deque<Part> waiting_;  // to be read before the file itself,
  LogPart file_;              // which may be open already
  FilePlace fileBegin_;
  std::vector<struct stat> seen_;  // of what was rotated away
  std::optional<Part> part_;       // that is being read
  bool failed_ = false;
  bool isPipe_ = false;
  std::uint64_t offset_ = 0;
  std::vector<unsigned char> known_;  // the last bytes before it
};

}  // namespace mpuevent::log

#endif
