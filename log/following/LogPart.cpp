#include "log/following/LogPart.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

namespace mpuevent::log {

namespace fs = std::filesystem;

// Opening a FIFO does not wait for somebody to write to it.
LogPart::LogPart(const std::string& name)
    : descriptor_(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)),
      error_(descriptor_ < 0 ? errno : 0) {}

LogPart::LogPart(LogPart&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), error_(other.error_) {}

LogPart& LogPart::operator=(LogPart&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(error_, other.error_);
  return *this;
}

LogPart::~LogPart() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

struct stat LogPart::status() const {
  struct stat status = {};
  if (descriptor_ >= 0) ::fstat(descriptor_, &status);
  return status;
}

long LogPart::readAt(std::uint64_t offset, unsigned char* to, std::size_t room) const {
  for (;;) {
    const ssize_t got = ::pread(descriptor_, to, room, static_cast<off_t>(offset));
    if (got >= 0 || errno != EINTR) return got >= 0 ? got : -errno;
  }
}

std::optional<std::uint64_t> LogPart::digest(std::uint64_t from, std::uint64_t to) const {
  std::array<unsigned char, 4096> bytes;
  std::uint64_t digest = digestOf({});
  while (from < to) {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), to - from));
    const long got = readAt(from, bytes.data(), wanted);
    if (got <= 0) return std::nullopt;
    digest = digestOf({bytes.data(), static_cast<std::size_t>(got)}, digest);
    from += static_cast<std::uint64_t>(got);
  }
  return digest;
}

FilePlace LogPart::end() const {
  constexpr std::uint64_t known = 4096;
  const auto size = static_cast<std::uint64_t>(status().st_size);
  const std::uint64_t length = std::min(size, known);
  return {size, length, digest(size - length, size).value_or(0)};
}

bool LogPart::holds(const FilePlace& place) const {
  if (!isOpen() || place.length > place.offset) return false;
  return place.length == 0 || digest(place.offset - place.length, place.offset) == place.digest;
}

bool isSameFile(const struct stat& one, const struct stat& other) {
  return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool isOlder(const struct stat& one, const struct stat& other) {
  return std::tie(one.st_mtim.tv_sec, one.st_mtim.tv_nsec) <
         std::tie(other.st_mtim.tv_sec, other.st_mtim.tv_nsec);
}

namespace {

bool isRotation(std::string_view ending) {
  constexpr std::string_view marks = ".-_";
  if (ending.size() < 2 || marks.find(ending[0]) == std::string_view::npos) return false;
  ending.remove_prefix(1);
  const bool number = ending[0] >= '0' && ending[0] <= '9' &&
                      ending.find_first_not_of("0123456789.-_:TZ") == std::string_view::npos;
  return number || ending == "old" || ending == "bak";
}

}  // namespace

std::vector<LogPart> rotatedParts(const std::string& name) {
  const fs::path path(name);
  const std::string file = path.filename().string();
  const fs::path directory = path.has_parent_path() ? path.parent_path() : fs::path(".");
  std::vector<LogPart> parts;
  std::error_code error;
  for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string beside = entry->path().filename().string();
    std::error_code unknown;
    if (!beside.starts_with(file) || !isRotation(std::string_view(beside).substr(file.size())) ||
        !entry->is_regular_file(unknown)) {
      continue;
    }
    if (LogPart part(entry->path().string()); part.isOpen()) parts.push_back(std::move(part));
  }
  std::stable_sort(parts.begin(), parts.end(), [](const LogPart& one, const LogPart& other) {
    return isOlder(one.status(), other.status());
  });
  return parts;
}

}  // namespace mpuevent::log
