#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "log/input/Decompression.h"
#include "log/input/Libarchive.h"
#include "log/input/LogSource.h"
#include "log/input/Packing.h"

namespace mpuevent::log {

const bool unpacks = true;

namespace {

constexpr int kDeepest = 8;  // an archive may hold itself
constexpr std::size_t kPiece = std::size_t{64} << 10;

/// The bytes of a source, the first of which have been looked at.
class Peeked {
 public:
  explicit Peeked(ReadBytes read) : read_(std::move(read)) {}

  Packing packing() {
    for (;;) {
      const std::optional<Packing> packing = packingOf({bytes_.data(), bytes_.size()}, ended_);
      if (packing) return *packing;
      const std::size_t held = bytes_.size();
      bytes_.resize(packingSpan);
      end_ = read_(bytes_.data() + held, packingSpan - held);
      ended_ = end_ <= 0;
      bytes_.resize(held + static_cast<std::size_t>(std::max(end_, 0L)));
    }
  }

  /// Whether all that has been looked at has been given.
  bool isGiven() const { return at_ == bytes_.size() && !ended_; }

  /// As ReadBytes.
  long read(unsigned char* to, std::size_t room) {
    if (at_ == bytes_.size()) return ended_ ? end_ : read_(to, room);
    const std::size_t count = std::min(room, bytes_.size() - at_);
    std::memcpy(to, bytes_.data() + at_, count);
    at_ += count;
    return static_cast<long>(count);
  }

 private:
  ReadBytes read_;
  std::vector<unsigned char> bytes_;
  std::size_t at_ = 0;
  bool ended_ = false;
  long end_ = 0;  // what the read that ended the bytes gave
};

/// libarchive reading from a source.
class Archive {
 public:
  explicit Archive(const ReadBytes& read)
      : read_(read), piece_(kPiece), archive_(nullptr, archive_read_free) {
    try {
      archive_.reset(archive_read_new());
      archive* const opened = archive_.get();
      archive_read_support_format_tar(opened);
      archive_read_support_format_zip_streamable(opened);
      note(archive_read_open(opened, this, nullptr, &Archive::feed, nullptr));
    } catch (const LibraryError& error) {
      fatal_ = true;
      error_ = error.what();
    }
  }

  /// Goes on to the next file; false if there is none, or it cannot be found any more.
  bool next() {
    while (!fatal_) {
      archive_entry* entry = nullptr;
      const int result = archive_read_next_header(archive_.get(), &entry);
      if (result == ARCHIVE_EOF) return false;
      if (result == ARCHIVE_RETRY) continue;
      if (!note(result)) {
        fatal_ = true;
        return false;
      }
      if (archive_entry_filetype(entry) != AE_IFREG || archive_entry_hardlink(entry) != nullptr) {
        continue;
      }
      const char* path = archive_entry_pathname(entry);
      if (path == nullptr) path = archive_entry_pathname_utf8(entry);
      block_ = {};
      hole_ = 0;
      offset_ = 0;
      path_ = path != nullptr ? path : "?";
      return true;
    }
    return false;
  }

  const std::string& path() const { return path_; }

  /// The bytes of the file at hand, as ReadBytes. Where it is broken it ends.
  long read(unsigned char* to, std::size_t room) {
    while (block_.empty() && hole_ == 0) {
      if (!error_.empty() || !nextBlock()) return readError_ != 0 ? -readError_ : 0;
    }
    const std::size_t count = std::min(room, hole_ != 0 ? hole_ : block_.size());
    if (hole_ != 0) {
      std::memset(to, 0, count);
      hole_ -= count;
    } else {
      std::memcpy(to, block_.data(), count);
      block_ = block_.subspan(count);
    }
    return static_cast<long>(count);
  }

  /// What was found broken since the last call, or nothing.
  std::string takeError() { return std::exchange(error_, {}); }

 private:
  static la_ssize_t feed(archive* to, void* self, const void** bytes) {
    auto& source = *static_cast<Archive*>(self);
    const long got = source.read_(source.piece_.data(), source.piece_.size());
    *bytes = source.piece_.data();
    if (got >= 0) return got;
    source.readError_ = static_cast<int>(-got);
    archive_clear_error(to);  // note() has the reason
    return ARCHIVE_FATAL;
  }

  // False at the end of the file at hand. Block by block, as archive_read_data() forgets what it
  // has when it comes to a break.
  bool nextBlock() {
    constexpr la_int64_t widestHole = la_int64_t{16} << 20;
    const void* bytes = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    const int result = archive_read_data_block(archive_.get(), &bytes, &size, &offset);
    if (result == ARCHIVE_EOF || !note(result)) return false;
    const la_int64_t hole = offset - offset_;
    if (hole < 0 || hole > widestHole) {
      error_ = "a hole of more than 16 MiB in a file";
      return false;
    }
    hole_ = static_cast<std::size_t>(hole);
    block_ = {static_cast<const unsigned char*>(bytes), size};
    offset_ = offset + static_cast<la_int64_t>(size);
    return true;
  }

  bool note(int result) {
    if (result >= ARCHIVE_WARN) return true;
    const char* text = archive_error_string(archive_.get());
    if (text == nullptr) text = readError_ != 0 ? std::strerror(readError_) : "unknown error";
    error_ = text;
    fatal_ = fatal_ || result < ARCHIVE_FAILED;
    return false;
  }

  const ReadBytes& read_;
  std::vector<unsigned char> piece_;
  std::unique_ptr<archive, decltype((archive_read_free))> archive_;
  // Of the file at hand:
  std::string path_;
  std::span<const unsigned char> block_;  // bytes not given yet,
  std::size_t hole_ = 0;                  // the zeros before them,
  la_int64_t offset_ = 0;                 // and where they end
  std::string error_;
  bool fatal_ = false;  // nothing more can be read
  int readError_ = 0;
};

void forEachLog(const LogSource& source, const LogVisitor& visitor, int depth);

void forEachFile(const LogSource& packed, const LogVisitor& visitor, int depth) {
  Archive archive(packed.read);
  const auto tellError = [&](const std::string& name) {
    if (const std::string error = archive.takeError(); !error.empty()) visitor.broken(name, error);
  };
  while (archive.next()) {
    const LogSource file{
        packed.name + ":" + archive.path(),
        [&](unsigned char* to, std::size_t room) { return archive.read(to, room); },
        {}};
    forEachLog(file, visitor, depth);
    tellError(file.name);
  }
  tellError(packed.name);
}

void forEachLog(const LogSource& source, const LogVisitor& visitor, int depth) {
  Peeked peeked(source.read);
  const LogSource whole{
      source.name, [&](unsigned char* to, std::size_t room) { return peeked.read(to, room); },
      [&] { return peeked.isGiven() && source.isIdle && source.isIdle(); }, source.readAt};
  const Packing packing = peeked.packing();
  if (packing == Packing::none) {
    visitor.visit(whole);
  } else if (depth == kDeepest) {
    visitor.broken(source.name, "packed more than " + std::to_string(kDeepest) + " times");
  } else if (packing == Packing::archive) {
    forEachFile(whole, visitor, depth + 1);
  } else {
    Decompression unpacked(packing, whole.read);
    const LogSource inner{
        source.name,
        [&](unsigned char* to, std::size_t room) { return unpacked.read(to, room); },
        {}};
    if (unpacked.error().empty()) forEachLog(inner, visitor, depth + 1);
    if (!unpacked.error().empty()) visitor.broken(source.name, unpacked.error());
  }
}

}  // namespace

void forEachLog(const LogSource& source, const LogVisitor& visitor) {
  forEachLog(source, visitor, 0);
}

}  // namespace mpuevent::log
