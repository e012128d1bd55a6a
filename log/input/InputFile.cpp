#include "log/input/InputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <vector>

namespace mpuevent::log {

InputFile::InputFile(const std::string& name)
    : descriptor_(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC)),
      error_(descriptor_ < 0 ? errno : 0),
      begin_(descriptor_ < 0 ? -1 : ::lseek(descriptor_, 0, SEEK_CUR)) {}

InputFile::~InputFile() {
  if (descriptor_ > STDIN_FILENO) ::close(descriptor_);
}

void InputFile::rewind() {
  if (::lseek(descriptor_, static_cast<off_t>(begin_), SEEK_SET) < 0) error_ = errno;
}

namespace {

// Below 0 if that fails.
int openTemporary() {
  const char* const directory = std::getenv("TMPDIR");
  std::string name = directory != nullptr && *directory != '\0' ? directory : "/tmp";
  name += "/mpuevent.XXXXXX";
  const int descriptor = ::mkstemp(name.data());
  if (descriptor >= 0) ::unlink(name.c_str());
  return descriptor;
}

bool writeAll(int descriptor, const unsigned char* bytes, std::size_t count) {
  while (count != 0) {
    const ssize_t written = ::write(descriptor, bytes, count);
    if (written < 0 && errno != EINTR) return false;
    bytes += std::max<ssize_t>(written, 0);
    count -= static_cast<std::size_t>(std::max<ssize_t>(written, 0));
  }
  return true;
}

}  // namespace

void InputFile::spool() {
  const int copy = openTemporary();
  bool whole = copy >= 0;
  std::vector<unsigned char> piece(std::size_t{64} << 10);
  long got = 0;
  while (whole && (got = read(piece.data(), piece.size())) > 0) {
    whole = writeAll(copy, piece.data(), static_cast<std::size_t>(got));
  }
  const int failure = whole ? static_cast<int>(-got) : errno;
  if (descriptor_ > STDIN_FILENO) ::close(descriptor_);
  descriptor_ = copy;
  begin_ = 0;
  error_ = failure;
  if (error_ == 0) rewind();
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
