#include "log/following/FollowedFile.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <utility>

namespace mpuevent::log {

namespace {

constexpr int kPauseInMilliseconds = 250;
constexpr int kMomentInMilliseconds = 10;
constexpr std::size_t kKnown = 256;

}  // namespace

std::int64_t FollowedFile::beginning() const {
  struct stat named = {};
  return ::stat(name_.c_str(), &named) == 0 ? named.st_mtim.tv_sec : std::time(nullptr);
}

FollowedFile::FollowedFile(std::string name, bool waits, std::function<bool()> isStopped)
    : name_(std::move(name)), waits_(waits), isStopped_(std::move(isStopped)) {
  // What is there now is nobody's business, unless somebody begins behind a place.
  for (const LogPart& part : rotatedParts(name_)) seen_.push_back(part.status());
}

bool FollowedFile::beginBehind(const FilePlace& place, std::int64_t since) {
  file_ = LogPart(name_);
  std::vector<LogPart> parts = rotatedParts(name_);
  seen_.clear();
  for (const LogPart& part : parts) seen_.push_back(part.status());
  const auto isIn = [&place](const LogPart& part) {
    return place.length != 0 && part.holds(place);
  };
  if (isIn(file_)) {
    fileBegin_ = place;
    return true;
  }
  // Of several copies the last.
  const auto found = std::find_if(parts.rbegin(), parts.rend(), isIn);
  struct stat last = {};
  last.st_mtim.tv_sec = static_cast<time_t>(since);
  if (found != parts.rend()) {
    last = found->status();
    waiting_.push_back({std::move(*found), place});
    parts.erase(std::next(found).base());
  }
  for (LogPart& part : parts) {
    const struct stat status = part.status();
    if (!isOlder(status, last) && !isSameFile(status, file_.status())) {
      waiting_.push_back({std::move(part)});
    }
  }
  return !waiting_.empty() && waiting_.front().begin.offset != 0;
}

bool FollowedFile::next() {
  if (part_) {
    if (failed_ || isStopped_() || (!waits_ && !part_->isRotated)) return false;
    seen_.push_back(part_->file.status());
    part_->isRotated = true;
  }
  for (;;) {
    // Before the look at what was rotated away, as it may be so meanwhile.
    if (!file_.isOpen()) file_ = LogPart(name_);
    queueUnseen();
    if (!waiting_.empty()) {
      open(std::move(waiting_.front()));
      waiting_.pop_front();
      return true;
    }
    if (file_.isOpen() || !waits_) {
      open({std::move(file_), std::exchange(fileBegin_, {}), false});
      return true;
    }
    if (!pause()) return false;
  }
}

// What came and went while nobody looked.
void FollowedFile::queueUnseen() {
  std::vector<struct stat> seen;
  for (LogPart& part : rotatedParts(name_)) {
    const struct stat status = part.status();
    if (isSameFile(status, file_.status())) continue;
    if (!isSeen(status)) waiting_.push_back({std::move(part)});
    seen.push_back(status);
  }
  seen_ = std::move(seen);
}

bool FollowedFile::isSeen(const struct stat& status) const {
  return std::any_of(seen_.begin(), seen_.end(), [&status](const struct stat& known) {
    return isSameFile(status, known) && !isOlder(status, known) && !isOlder(known, status);
  });
}

void FollowedFile::open(Part part) {
  part_ = std::move(part);
  isPipe_ = part_->file.isOpen() && !S_ISREG(part_->file.status().st_mode);
  offset_ = part_->begin.offset;
  known_.clear();
}

long FollowedFile::read(unsigned char* to, std::size_t room) {
  while (!isStopped_()) {
    const bool replaced = isReplaced();
    const long got = readHere(to, room);
    failed_ = got < 0;
    if (failed_) return got;
    // Asked after reading, as it may be truncated at any moment.
    if (!isStillTheSame()) {
      if (!goOnInCopy()) return 0;
    } else if (got > 0) {
      remember({to, static_cast<std::size_t>(got)});
      return got;
    } else if (!waits_ || part_->isRotated || replaced || !pause()) {
      return 0;
    }
  }
  return 0;
}

bool FollowedFile::isStillTheSame() {
  if (isPipe_ || !part_->file.isOpen()) return true;
  return part_->file.holds(here()) && (part_->isRotated || !wasCopied());
}

// The bytes that are known tell little where they are few: records begin alike.
bool FollowedFile::wasCopied() {
  for (const LogPart& copy : rotatedParts(name_)) {
    const struct stat status = copy.status();
    if (isSeen(status) || isSameFile(status, part_->file.status())) continue;
    if (here().length == 0) return true;
    // To be truncated is to be written to.
    if (isOlder(part_->file.status(), status) || !copy.holds(here())) continue;
    if (!part_->file.holds(copy.end())) return true;
    seen_.push_back(status);
  }
  return false;
}

long FollowedFile::readHere(unsigned char* to, std::size_t room) const {
  if (!part_->file.isOpen()) return -part_->file.error();
  if (!isPipe_) return part_->file.readAt(offset_, to, room);
  const ssize_t got = ::read(part_->file.descriptor(), to, room);
  if (got >= 0) return got;
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR ? 0 : -errno;
}

void FollowedFile::remember(std::span<const unsigned char> bytes) {
  offset_ += bytes.size();
  const auto last = bytes.last(std::min(kKnown, bytes.size()));
  const std::size_t kept = std::min(known_.size(), kKnown - last.size());
  known_.erase(known_.begin(), known_.end() - static_cast<std::ptrdiff_t>(kept));
  known_.insert(known_.end(), last.begin(), last.end());
}

FilePlace FollowedFile::here() const {
  return known_.empty() ? part_->begin : FilePlace{offset_, known_.size(), digestOf(known_)};
}

bool FollowedFile::idle() const {
  if (!waits_ || part_->isRotated || !part_->file.isOpen()) return false;
  if (isPipe_) {
    pollfd waiting{part_->file.descriptor(), POLLIN, 0};
    return ::poll(&waiting, 1, kMomentInMilliseconds) == 0 || (waiting.revents & POLLIN) == 0;
  }
  return isAtEnd() && (::poll(nullptr, 0, kMomentInMilliseconds), isAtEnd());
}

bool FollowedFile::isAtEnd() const {
  return static_cast<std::uint64_t>(part_->file.status().st_size) <= offset_;
}

long FollowedFile::readAt(std::uint64_t offset, unsigned char* to, std::size_t room) const {
  return isPipe_ ? -ESPIPE : part_->file.readAt(part_->begin.offset + offset, to, room);
}

bool FollowedFile::isReplaced() const {
  struct stat named = {};
  return waits_ && !part_->isRotated && !isPipe_ && ::stat(name_.c_str(), &named) == 0 &&
         !isSameFile(named, part_->file.status()) && named.st_size > 0;
}

bool FollowedFile::goOnInCopy() {
  const FilePlace place = here();
  std::vector<LogPart> parts = rotatedParts(name_);
  const auto isCopy = [&](const LogPart& part) {
    return part.holds(place) && !isSameFile(part.status(), part_->file.status());
  };
  // What came later is read later; of those that were copies before, the last.
  auto copy = std::find_if(parts.begin(), parts.end(), [&](const LogPart& part) {
    return !isSeen(part.status()) && !isOlder(part_->file.status(), part.status()) && isCopy(part);
  });
  if (copy == parts.end()) {
    const auto last = std::find_if(parts.rbegin(), parts.rend(), isCopy);
    if (last != parts.rend()) copy = std::prev(last.base());
  }
  // What is in it now comes later.
  if (!part_->isRotated) file_ = std::move(part_->file);
  part_->isRotated = true;
  if (place.length == 0 || copy == parts.end()) return false;
  seen_.push_back(copy->status());
  part_->file = std::move(*copy);
  return true;
}

bool FollowedFile::pause() const {
  if (isStopped_()) return false;
  ::poll(nullptr, 0, kPauseInMilliseconds);  // a signal ends it
  return !isStopped_();
}

}  // namespace mpuevent::log
