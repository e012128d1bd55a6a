#include "Output.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

// The errno value of the failure, or 0.
int writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
      // Whoever shares the descriptor has made it non-blocking.
      pollfd waiting{descriptor, POLLOUT, 0};
      if (::poll(&waiting, 1, -1) < 0 && errno != EINTR) return errno;
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

void throwIf(int error) {
  if (error == EPIPE) throw ClosedPipe();
  if (error != 0) throw std::system_error(error, std::generic_category());
}

}  // namespace

void Output::flush() {
  written_ = written_ || !text_.empty();
  const int error = writeAll(STDOUT_FILENO, text_.view());
  text_.clear();
  throwIf(error);
}

void Output::synchronise() {
  flush();
  // Pipes and terminals cannot.
  if (::fdatasync(STDOUT_FILENO) != 0 && errno != EINVAL && errno != EROFS && errno != EBADF) {
    throwIf(errno);
  }
}

void Output::close() {
  flush();
  // One who writes nothing may have no standard output.
  if (::close(STDOUT_FILENO) != 0 && (written_ || errno != EBADF)) throwIf(errno);
}

void writeToStandardError(std::string_view text) {
  static_cast<void>(writeAll(STDERR_FILENO, text));
}

void complain(std::string_view message) {
  TextBuffer line;
  line += "mpuevent: ";
  appendVisible(line, message);
  line += '\n';
  writeToStandardError(line.view());
}

}  // namespace mpuevent::tool
