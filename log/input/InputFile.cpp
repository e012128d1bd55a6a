#include "log/input/InputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace mpuevent::log {

InputFile::InputFile(const std::string& name)
    : descriptor_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)),
      error_(descriptor_ < 0 ? errno : 0) {}

InputFile::~InputFile() {
  if (descriptor_ > STDIN_FILENO) ::close(descriptor_);
}

long InputFile::read(unsigned char* to, std::size_t room) const {
  if (error_ != 0) return -error_;
  for (;;) {
    const ssize_t got = ::read(descriptor_, to, room);
    if (got >= 0) return got;
    if (errno == EAGAIN || errno == EWOULDBLOCK) {
      // Whoever shares the descriptor has made it non-blocking.
      pollfd waiting{descriptor_, POLLIN, 0};
      if (::poll(&waiting, 1, -1) >= 0) continue;
    }
    if (errno != EINTR) return -errno;
  }
}

bool InputFile::idle() const {
  constexpr int momentInMilliseconds = 10;
  pollfd waiting{descriptor_, POLLIN, 0};
  return error_ == 0 && ::poll(&waiting, 1, momentInMilliseconds) == 0;
}

}  // namespace mpuevent::log
