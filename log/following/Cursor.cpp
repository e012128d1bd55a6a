#include "log/following/Cursor.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "log/choosing/RecordBytes.h"

namespace mpuevent::log {

namespace {

constexpr std::string_view kFirstLine = "mpuevent cursor 1";

constexpr std::size_t kMessageHeader = 64;

[[noreturn]] void fail(const std::string& path) {
  throw std::system_error(errno, std::generic_category(), path);
}

std::string hexOf(std::string_view bytes) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string hex;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    hex += {digits[byte >> 4], digits[byte & 0xF]};
  }
  return hex;
}

template <typename Number>
bool parse(std::string_view text, Number& number, int base = 10) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  return error == std::errc() && end == text.data() + text.size();
}

bool parseHex(std::string_view text, std::string& bytes) {
  bytes.clear();
  if (text.size() % 2 != 0) return false;
  for (; !text.empty(); text.remove_prefix(2)) {
    unsigned char byte = 0;
    if (!parse(text.substr(0, 2), byte, 16)) return false;
    bytes += static_cast<char>(byte);
  }
  return true;
}

/// Takes a text apart, line by line; each is a name, a blank and a value.
class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {}

  bool is(std::string_view line) { return next() == line; }
  template <typename Number>
  bool read(std::string_view name, Number& number, int base = 10) {
    std::string_view line = next();
    return take(line, name) && parse(line, number, base);
  }
  bool read(std::string_view name, std::string& bytes) {
    std::string_view line = next();
    return take(line, name) && parseHex(line, bytes);
  }

 private:
  std::string_view next() {
    const std::size_t end = std::min(text_.find('\n'), text_.size());
    const std::string_view line = text_.substr(0, end);
    text_.remove_prefix(std::min(end + 1, text_.size()));
    return line;
  }
  static bool take(std::string_view& line, std::string_view name) {
    if (!line.starts_with(name) || !line.substr(name.size()).starts_with(' ')) return false;
    line.remove_prefix(name.size() + 1);
    return true;
  }

  std::string_view text_;
};

bool parse(std::string_view text, LogPlace& place) {
  Lines lines(text);
  return lines.is(kFirstLine) && lines.read("offset", place.file.offset) &&
         lines.read("length", place.file.length) && lines.read("digest", place.file.digest, 16) &&
         lines.read("index", place.index) && lines.read("log", place.logInstance) &&
         lines.read("sequence", place.sequenceId) &&
         lines.read("enclosure", place.enclosureSerial) &&
         lines.read("controller", place.controllerSerial) && lines.read("time", place.time);
}

std::string describe(const LogPlace& place) {
  char digest[17] = {};
  std::to_chars(digest, digest + 16, place.file.digest, 16);
  std::string text(kFirstLine);
  const auto line = [&text](std::string_view name, const std::string& value) {
    text.append("\n").append(name).append(" ").append(value);
  };
  line("offset", std::to_string(place.file.offset));
  line("length", std::to_string(place.file.length));
  line("digest", digest);
  line("index", std::to_string(place.index));
  line("log", std::to_string(place.logInstance));
  line("sequence", std::to_string(place.sequenceId));
  line("enclosure", hexOf(place.enclosureSerial));
  line("controller", hexOf(place.controllerSerial));
  line("time", std::to_string(place.time));
  return text + "\n";
}

void synchronise(const std::string& directory) {
  const int descriptor = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

void replace(const std::string& path, std::string_view text) {
  const std::string fresh = path + ".new";
  const int descriptor = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (descriptor < 0) fail(fresh);
  const ssize_t written = ::write(descriptor, text.data(), text.size());
  const bool whole = written == static_cast<ssize_t>(text.size()) && ::fsync(descriptor) == 0;
  if (written >= 0 && !whole && errno == 0) errno = ENOSPC;
  if (::close(descriptor) != 0 || !whole) fail(fresh);
  if (::rename(fresh.c_str(), path.c_str()) != 0) fail(path);
  const auto parent = std::filesystem::path(path).parent_path();
  synchronise(parent.empty() ? "." : parent.string());
}

}  // namespace

Cursor::Cursor(std::string path) : path_(std::move(path)) {
  std::error_code unknown;
  const bool exists = std::filesystem::exists(path_, unknown);
  errno = 0;
  std::ifstream file(path_, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (exists && !file) fail(path_);
  if (text.empty()) return;
  if (!parse(text, place_.emplace())) throw std::runtime_error(path_ + ": is no cursor");
}

void Cursor::moveBehind(const LogUnit& unit, std::uint64_t offset, std::uint64_t index) {
  recordAt_ = unit.header == nullptr ? 0 : kMessageHeader;
  unit_.assign(unit.header, unit.header == nullptr ? nullptr : unit.header + kMessageHeader);
  unit_.insert(unit_.end(), unit.record.begin(), unit.record.end());
  end_ = offset + unit_.size();
  index_ = index;
  moved_ = true;
}

void Cursor::saveBeginning(std::int64_t time) {
  place_.emplace().time = time;
  replace(path_, describe(*place_));
}

void Cursor::save() {
  if (!moved_) return;
  const Record record = recordOf(std::span(unit_).subspan(recordAt_));
  place_ = LogPlace{
      {end_, unit_.size(), digestOf(unit_)},
      index_,
      record.logInstance(),
      record.sequenceId(),
      std::string(record.enclosureSerialNumber()),
      std::string(record.controllerSerialNumber()),
      std::chrono::duration_cast<std::chrono::seconds>(
          std::chrono::system_clock::now().time_since_epoch())
          .count()
  };
  replace(path_, describe(*place_));
  moved_ = false;
}

}  // namespace mpuevent::log
