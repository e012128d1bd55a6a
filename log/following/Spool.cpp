#include "log/following/Spool.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

namespace mpuevent::log {

namespace {

constexpr std::string_view kSocket = "unix:";
constexpr int kPauseInMilliseconds = 250;
constexpr std::size_t kPiece = std::size_t{64} << 10;
constexpr std::uint64_t kLarge = std::uint64_t{1} << 20;
constexpr std::uint64_t kTooLarge = std::uint64_t{256} << 20;

int checked(int result, const std::string& name) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), name);
  return result;
}

bool meansLater(int error) { return error == EAGAIN || error == EINTR; }

void rest() { std::this_thread::sleep_for(std::chrono::seconds(1)); }

}  // namespace

Spool::Spool(const std::string& source, std::string path)
    : path_(std::move(path)), isSocket_(source.starts_with(kSocket)) {
  try {
    file_ = checked(::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600), path_);
    if (isSocket_) {
      listen(source.substr(kSocket.size()));
    } else {
      // With a writing end of its own it never ends.
      source_ = checked(::open(source.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC), source);
    }
  } catch (...) {
    closeAll();
    throw;
  }
  thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

Spool::~Spool() {
  thread_.request_stop();
  thread_.join();
  closeAll();
}

void Spool::closeAll() const {
  for (const int descriptor : {file_, source_, connection_}) {
    if (descriptor >= 0) ::close(descriptor);
  }
}

void Spool::listen(const std::string& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (name.size() >= sizeof address.sun_path) {
    throw std::system_error(ENAMETOOLONG, std::generic_category(), name);
  }
  name.copy(address.sun_path, name.size());
  struct stat old {};
  // Left behind by a process that was killed.
  if (::stat(name.c_str(), &old) == 0 && S_ISSOCK(old.st_mode)) ::unlink(name.c_str());
  source_ = checked(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0), name);
  checked(::bind(source_, reinterpret_cast<const sockaddr*>(&address), sizeof address), name);
  checked(::listen(source_, SOMAXCONN), name);
}

void Spool::run(const std::stop_token& stop) {
  while (!stop.stop_requested()) {
    try {
      if (!hasRoom()) {
        rest();
      } else if (awaitBytes()) {
        move();
      }
    } catch (const std::exception& error) {
      ::syslog(LOG_ERR, "mpuevent: %s", error.what());
      rest();
    }
  }
}

void Spool::settle(std::uint64_t offset) {
  const std::lock_guard lock(mutex_);
  settled_ = offset;
}

bool Spool::isSettledUpTo(std::uint64_t offset) {
  const std::lock_guard lock(mutex_);
  return settled_ == offset;
}

bool Spool::hasRoom() {
  const std::uint64_t held = size();
  if (held < kLarge) return true;
  if (isSettledUpTo(held)) {
    settle(0);
    checked(::ftruncate(file_, 0), path_);
    rest();  // whoever reads the file sees that it was cut before it grows
    return true;
  }
  return held < kTooLarge;
}

std::uint64_t Spool::size() const {
  struct stat status {};
  checked(::fstat(file_, &status), path_);
  return static_cast<std::uint64_t>(status.st_size);
}

bool Spool::awaitBytes() {
  pollfd waiting{connection_ >= 0 ? connection_ : source_, POLLIN, 0};
  if (::poll(&waiting, 1, kPauseInMilliseconds) <= 0) return false;
  if (!isSocket_ || connection_ >= 0) return true;
  connection_ = ::accept4(source_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  return false;
}

void Spool::move() {
  if (isSocket_) return moveFromSocket();
  // In one step: whoever kills this process finds the bytes here or there.
  auto end = static_cast<loff_t>(size());
  const ssize_t moved =
      ::splice(source_, nullptr, file_, &end, kPiece, SPLICE_F_NONBLOCK | SPLICE_F_MOVE);
  if (moved < 0 && !meansLater(errno)) checked(-1, path_);
}

void Spool::moveFromSocket() {
  std::array<unsigned char, kPiece> bytes;
  const ssize_t got = ::recv(connection_, bytes.data(), bytes.size(), 0);
  if (got < 0 && meansLater(errno)) return;
  if (got <= 0) {
    ::close(std::exchange(connection_, -1));
    return;
  }
  std::size_t written = 0;
  auto end = static_cast<off_t>(size());
  while (written < static_cast<std::size_t>(got)) {
    const ssize_t put =
        ::pwrite(file_, bytes.data() + written, static_cast<std::size_t>(got) - written, end);
    checked(static_cast<int>(put), path_);
    written += static_cast<std::size_t>(put);
    end += put;
  }
}

}  // namespace mpuevent::log
