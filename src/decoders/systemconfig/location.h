#ifndef DECODERS_SYSTEMCONFIG_LOCATION_H
#define DECODERS_SYSTEMCONFIG_LOCATION_H

#include "event/RecordView.h"
#include "event/SafeBody.h"

namespace mpuevent::systemconfig {

/// Where in the sources an event was logged. Of a block that is cut, what is held shows.
class LocationBlock {
 public:
  static constexpr std::size_t size = 32;

  /// A block of zeros: no names, line 0.
  LocationBlock();
  /// The block at the start of `bytes`.
  explicit LocationBlock(RecordView bytes) : block_(bytes.from(0, size)) {}

  std::uint16_t line() const { return block_.u16(lineAt); }
  std::string_view fileName() const { return block_.text(fileNameAt, longestFileName); }
  /// All the bytes that the file name leaves in the block for the function name.
  std::string_view functionField() const { return block_.bytes(functionAt()); }

  /// Writes `File`, `Func` and `Line`.
  void write(SafeBody& body) const;

 private:
  static constexpr std::size_t lineAt = 0;
  static constexpr std::size_t fileNameAt = 2;
  static constexpr std::size_t longestFileName = 29;

  std::size_t functionAt() const { return fileNameAt + fileName().size() + 1; }

  RecordView block_;
};

}  // namespace mpuevent::systemconfig

#endif
