#include "log/input/InputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace mpuevent::log {

InputFile::InputFile(const std::string& name)
    : descriptor_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)),
      error_(descriptor_ < 0 ? errno : 0),
      begin_(descriptor_ < 0 ? -1 : ::lseek(descriptor_, 0, SEEK_CUR)) {}

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

long InputFile::readAt(std::uint64_t offset, unsigned char* to, std::size_t room) const {
  if (begin_ < 0) return -ESPIPE;
  for (;;) {
    const ssize_t got = ::pread(descriptor_, to, room, static_cast<off_t>(offset) + begin_);
    if (got >= 0 || errno != EINTR) return got >= 0 ? got : -errno;
  }
}

bool InputFile::idle() const {
  constexpr int momentInMilliseconds = 10;
  pollfd waiting{descriptor_, POLLIN, 0};
  return error_ == 0 && ::poll(&waiting, 1, momentInMilliseconds) == 0;
}

}  // namespace mpuevent::log
