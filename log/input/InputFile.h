#ifndef MPUEVENT_LOG_INPUT_INPUTFILE_H
#define MPUEVENT_LOG_INPUT_INPUTFILE_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace mpuevent::log {

/// A file open for reading, or standard input, which stays open.
class InputFile {
 public:
  /// "-" is standard input. A failure to open shows when reading.
  explicit InputFile(const std::string& name);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  /// Whether rewind() is possible.
  bool hasPlaces() const { return begin_ >= 0; }
  /// Reading begins again where it began.
  void rewind();
  /// Copies what there is to be read into a temporary file without a name ($TMPDIR), which takes
  /// the place of this one and has places. A failure shows when reading.
  void spool();

  /// As ReadBytes wants it.
  long read(unsigned char* to, std::size_t room) const;

  /// As ReadBytesAt wants it; fails where a file has no places.
  long readAt(std::uint64_t offset, unsigned char* to, std::size_t room) const;

  /// Whether nothing comes for now, as IsIdle wants it: waits a moment, so that a program that is
  /// writing is not taken for one that has stopped.
  bool idle() const;

 private:
  int descriptor_;
  int error_;
  long long begin_;  // where reading began; below 0 if there are no places
};

}  // namespace mpuevent::log

#endif
