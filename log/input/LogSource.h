#ifndef MPUEVENT_LOG_INPUT_LOGSOURCE_H
#define MPUEVENT_LOG_INPUT_LOGSOURCE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "log/input/InputWindow.h"

namespace mpuevent::log {

/// Something to be read as a log, and its name.
struct LogSource {
  std::string name;
  ReadBytes read;
  IsIdle isIdle = {};       ///< none: never idle
  ReadBytesAt readAt = {};  ///< none: it can be read but once
};

/// All that a file offers: an InputFile or a FollowedFile, which must outlive the source.
template <typename File>
LogSource sourceOf(File& file, std::string name) {
  return {std::move(name),
          [&file](unsigned char* to, std::size_t room) { return file.read(to, room); },
          [&file] { return file.idle(); },
          [&file](std::uint64_t offset, unsigned char* to, std::size_t room) {
            return file.readAt(offset, to, room);
          }};
}

/// What becomes of the logs in a source, and of what is wrong with it.
struct LogVisitor {
  std::function<void(const LogSource& log)> visit;
  /// The packing is broken, or cannot be read; what came before has been visited.
  std::function<void(const std::string& name, const std::string& reason)> broken;
};

/// Whether this build unpacks.
extern const bool unpacks;

/// Visits the source itself or, if it is compressed or an archive, what is packed in it: the files
/// of an archive one after another, in one pass and in constant memory, named
/// "bundle.tar.gz:logs/array.cmap". What is packed in these is unpacked as well.
void forEachLog(const LogSource& source, const LogVisitor& visitor);

}  // namespace mpuevent::log

#endif
