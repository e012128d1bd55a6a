#include <MPUEvent/MPUEvent.h>

#include <CMAP/CMAPErrorCodes.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/RecordView.h"

namespace Pegasus {

namespace {

constexpr Uint16 messageHeaderSize = 64;

// Entries of the CMAP library's table of error codes.
constexpr std::size_t readFailed = 28;
constexpr std::size_t readTooShort = 30;

char* bytesOf(EmpEvLogMsg_s* record) { return reinterpret_cast<char*>(record); }

/// Zeros, as a stream may deliver less than it says, or throw. There is always a whole header, for
/// `str()`.
EmpEvLogMsg_s* newRecord(unsigned int length) {
  const std::size_t size = std::max<std::size_t>(length, mpuevent::Record::headerSize);
  return reinterpret_cast<EmpEvLogMsg_s*>(new char[size]());
}

}  // namespace

// The header member is constructed by default and then replaced: that draws a handle.
MPUEvent::MPUEvent(const CMAPMessageHeader& header) : record_(nullptr), recordLength_(0) {
  header_ = header;
}

MPUEvent::MPUEvent(const CMAPMessageHeader& header, Quarn_istream& stream) : MPUEvent(header) {
  MPUEvent::deserialize(stream);
}

MPUEvent::MPUEvent(const MPUEvent& other)
    : record_(newRecord(other.recordLength_)), recordLength_(other.recordLength_) {
  header_ = other.header_;
  if (recordLength_ > 0) std::memcpy(bytesOf(record_), bytesOf(other.record_), recordLength_);
}

// Assigning a different envelope comes back here with another different envelope, without end;
// that is how this operator is meant to behave.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
MPUEvent MPUEvent::operator=(const MPUEvent& other) {
  if (this != &other) *this = MPUEvent(other);
  return *this;
}
#pragma GCC diagnostic pop

MPUEvent::~MPUEvent() { delete[] bytesOf(record_); }

CMAPMessageHeader MPUEvent::getCMAPMessageHeader() const { return header_; }
void MPUEvent::setCMAPMessageHeader(const CMAPMessageHeader& header) { header_ = header; }

String MPUEvent::str() const {
  String line = header_.str();
  line.append(", ");
  if (record_ == nullptr) return line.append("<No MMSG Data!>");
  const mpuevent::Record record(record_, static_cast<int>(recordLength_));
  mpuevent::LineBuffer text(mpuevent::Separator::none);
  const auto number = [&text](std::string_view label, std::uint32_t value) {
    text.text(label);
    text.decimal(static_cast<std::int32_t>(value));
  };
  number("SequenceId: ", record.sequenceId());
  number(", time: ", record.timestamp());
  number(", len: ", record.structLength());
  number(", source: ", record.source());
  number(", type: ", record.type());
  number(", category: ", record.category());
  number(", eventId (", record.idVersion());
  number("): ", record.id());
  return line.append(text.string());
}

Quarn_istream& MPUEvent::deserialize(Quarn_istream& stream) {
  const auto length = static_cast<Uint16>(header_.getTotalLength() - messageHeaderSize);
  EmpEvLogMsg_s* record = newRecord(length);
  delete[] bytesOf(record_);
  record_ = record;
  recordLength_ = length;

  stream.read(bytesOf(record_), length);
  const int count = stream.gcount();
  if (count == length) return stream;
  const int delivered = std::clamp(count, 0, int{length});
  std::memset(bytesOf(record_) + delivered, 0, static_cast<std::size_t>(length - delivered));
  const Uint32 code = CMAPErrorCodes::_errorCodeArray[count < 0 ? readFailed : readTooShort].code;
  throw CMAPOperationFailedException(
      code, CMAPErrorCodes::getTextForIndex(CMAPErrorCodes::getIndex(code)));
}

}  // namespace Pegasus
