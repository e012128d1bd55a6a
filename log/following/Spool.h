#ifndef MPUEVENT_LOG_FOLLOWING_SPOOL_H
#define MPUEVENT_LOG_FOLLOWING_SPOOL_H

#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace mpuevent::log {

/// Moves what arrives in a FIFO or on a Unix-domain socket to a file, as it comes: who writes there
/// need not wait for those who read, and what has arrived lasts when this process is killed.
class Spool {
 public:
  /// `source` is a FIFO, or "unix:" and where to listen: one connection after another is read. The
  /// file goes on where it ends. Throws `std::system_error`.
  Spool(const std::string& source, std::string path);
  ~Spool();
  Spool(const Spool&) = delete;
  Spool& operator=(const Spool&) = delete;

  /// Nobody needs the bytes of the file before `offset` any more. When that is all of a file that
  /// has grown large it begins anew.
  void settle(std::uint64_t offset);

 private:
  void listen(const std::string& name);
  void closeAll() const;
  void run(const std::stop_token& stop);
  bool awaitBytes();
  void move();
  void moveFromSocket();
  bool hasRoom();
  bool isSettledUpTo(std::uint64_t offset);
  std::uint64_t size() const;

  const std::string path_;
  int file_ = -1;
  int source_ = -1;      // the FIFO, or the socket that listens
  int connection_ = -1;  // of that socket
  bool isSocket_ = false;
  std::mutex mutex_;  // of what follows
  std::uint64_t settled_ = 0;
  std::jthread thread_;  // the last member: it uses the others
};

}  // namespace mpuevent::log

#endif
