#include "LogReader.h"

#include <algorithm>
#include <string>
#include <utility>

namespace mpuevent::log {

namespace {

constexpr std::size_t kMessageHeader = 64;
constexpr std::size_t kTotalLengthAt = 10;
constexpr std::size_t kRecordHeader = 152;
constexpr std::size_t kStructLengthAt = 144;
constexpr std::size_t kNumberWidth = 2;
constexpr std::size_t kLargestNumber = 0xFFFF;
constexpr std::size_t kSmallestMessage = kMessageHeader + kRecordHeader;
// What must be in view to tell whether a message agrees.
constexpr std::size_t kAgreementSpan = kMessageHeader + kStructLengthAt + kNumberWidth;

constexpr std::size_t kSearchStep = kLargestNumber + 1;
constexpr std::size_t kRecogniseSpan = 2 * kLargestNumber;
// The farthest look: at the second message after one found in a search or by its own length.
constexpr std::size_t kLongestOwn = kSmallestMessage + kLargestNumber;
static_assert(kLongestOwn + kLargestNumber + kLongestOwn + kAgreementSpan <= InputWindow::farthest);
static_assert(kSearchStep < kLongestOwn);

// Neither text nor zeros chain for so long within the span looked at.
constexpr int kConvincingChain = 64;

std::string bytesText(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

}  // namespace

LogReader::LogReader(ReadBytes read, LogForm form, ReportDamage report)
    : window_(std::move(read)), form_(form), report_(std::move(report)) {}

bool LogReader::next(LogUnit& unit) {
  window_.advance(std::exchange(taken_, 0));
  if (form_ == LogForm::automatic) {
    form_ = recognise();
  }
  return form_ == LogForm::messages ? nextMessage(unit) : nextRecord(unit);
}

LogForm LogReader::recognise() {
  int chained = 0;
  for (std::size_t at = 0; at <= kRecogniseSpan; ++chained) {
    if (agreesAt(at) || chained == kConvincingChain || (at != 0 && endsAt(at))) {
      return LogForm::messages;
    }
    const bool held = window_.hold(at + kMessageHeader) >= at + kMessageHeader;
    const std::size_t length = held ? numberAt(at + kTotalLengthAt) : 0;
    if (length < kMessageHeader) break;
    at += length;
  }
  // The total lengths do not chain from the start: these are records, or messages of which the
  // first is damaged.
  if (const std::size_t own = ownLengthAt(0); own != 0 && (endsAt(own) || soundAt(own))) {
    return LogForm::messages;
  }
  for (std::size_t at = 0;
       at <= kRecogniseSpan && window_.hold(at + kRecordHeader) >= at + kRecordHeader;) {
    at += kRecordHeader + numberAt(at + kStructLengthAt);
    if (at <= kRecogniseSpan && endsAt(at)) return LogForm::records;
  }
  return findSound(0, kSearchStep) ? LogForm::messages : LogForm::records;
}

bool LogReader::nextRecord(LogUnit& unit) {
  if (!passTail(kRecordHeader, "record header")) return false;
  const std::size_t length = kRecordHeader + numberAt(kStructLengthAt);
  if (!passTail(length, "record")) return false;
  take(unit, 0, length);
  return true;
}

bool LogReader::nextMessage(LogUnit& unit) {
  while (passTail(kMessageHeader, "message header")) {
    const std::size_t length = numberAt(kTotalLengthAt);
    if (const std::size_t own = ownLengthAt(0); recordLengthIsBetter(length, own)) {
      report_(window_.offset(), "total length " + std::to_string(length) +
                                    " does not lead to the next message, but " +
                                    std::to_string(own) + ", the record's own, does");
      take(unit, kMessageHeader, own);
      return true;
    }
    if (passBrokenMessage(length)) continue;
    if (length >= kSmallestMessage) {
      take(unit, kMessageHeader, length);
      return true;
    }
    report_(window_.offset(), "record of " + bytesText(length - kMessageHeader) +
                                  " is shorter than its 152-byte header");
    window_.advance(length);
  }
  return false;
}

void LogReader::take(LogUnit& unit, std::size_t headerLength, std::size_t length) {
  unit.offset = window_.offset();
  unit.header = headerLength == 0 ? nullptr : window_.at(0);
  unit.record = {window_.at(headerLength), length - headerLength};
  taken_ = length;
}

// Whether `needed` bytes are there; if not, what is left is passed, and reported unless nothing is.
bool LogReader::passTail(std::size_t needed, std::string_view what) {
  const std::size_t left = window_.hold(needed);
  if (left >= needed) return true;
  if (left != 0) {
    std::string reason(what);
    reason += " of " + bytesText(needed) + " is cut off after " + std::to_string(left);
    report_(window_.offset(), reason);
    window_.advance(left);
  }
  return false;
}

// Whether the message must not be taken; it has then been reported, and the position is at the
// next sound message or at the end of the input.
bool LogReader::passBrokenMessage(std::size_t length) {
  const std::uint64_t offset = window_.offset();
  std::string reason;
  if (length < kMessageHeader) {
    reason = "total length " + std::to_string(length) + " is less than the 64-byte message header";
  } else if (const std::size_t left = window_.hold(length); left < length) {
    reason = "message of " + bytesText(length) + " is cut off after " + std::to_string(left);
  } else {
    if (leadsOnAt(length)) return false;
    // Bytes may be missing from this message, so that its length leads into a later one.
    const std::optional<std::size_t> found = findSound(1, length);
    if (found) {
      report_(offset, "message of " + bytesText(length) + " is cut off after " +
                          std::to_string(*found) + ", where another begins");
      window_.advance(*found);
    }
    return found.has_value();
  }
  std::optional<std::size_t> found = findSound(1, kSearchStep);
  while (!found && window_.hold(kSearchStep) >= kSearchStep) {
    window_.advance(kSearchStep);
    found = findSound(0, kSearchStep);
  }
  window_.advance(found ? *found : window_.hold(1));
  report_(offset, reason + "; " + bytesText(window_.offset() - offset) + " skipped" +
                      (found ? "" : ", up to the end"));
  return true;
}

// Whether `own`, the length that the record gives for the message, is better founded than the
// total length `length`.
bool LogReader::recordLengthIsBetter(std::size_t length, std::size_t own) {
  if (own == 0 || own == length) return false;
  const bool leadsOn = length >= kMessageHeader && leadsOnAt(length);
  // Inside the total length a sound message is no accident, so the length covers two messages.
  return leadsOn ? own < length && soundAt(own) : leadsOnAt(own);
}

std::size_t LogReader::numberAt(std::size_t distance) const {
  const unsigned char* bytes = window_.at(distance);
  return std::size_t{bytes[0]} << 8 | bytes[1];
}

// The length of the message there by its record; 0 if the input ends before the record tells.
std::size_t LogReader::ownLengthAt(std::size_t distance) {
  return window_.hold(distance + kAgreementSpan) < distance + kAgreementSpan
             ? 0
             : kSmallestMessage + numberAt(distance + kMessageHeader + kStructLengthAt);
}

bool LogReader::agreesAt(std::size_t distance) {
  const std::size_t own = ownLengthAt(distance);
  return own != 0 && numberAt(distance + kTotalLengthAt) == own;
}

bool LogReader::endsAt(std::size_t distance) { return window_.hold(distance + 1) == distance; }

// Whether a message there agrees and so does what it leads to: both by accident is all but
// impossible. That the next one's total length is damaged does not count against this one.
bool LogReader::soundAt(std::size_t distance) {
  if (!agreesAt(distance)) return false;
  const std::size_t next = distance + numberAt(distance + kTotalLengthAt);
  if (leadsOnAt(next)) return true;
  const std::size_t own = ownLengthAt(next);
  return own != 0 && agreesAt(next + own);
}

std::optional<std::size_t> LogReader::findSound(std::size_t begin, std::size_t end) {
  for (std::size_t distance = begin; distance < end; ++distance) {
    if (soundAt(distance)) return distance;
  }
  return std::nullopt;
}

}  // namespace mpuevent::log
