#include "store/Batch.h"

#include <MPUEvent/FieldRecorder.h>
#include <MPUEvent/Version.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>
#include <array>
#include <string>

#include "EventDecoder.h"
#include "forms/Columns.h"
#include "forms/JsonElements.h"
#include "log/choosing/RecordBytes.h"
#include "store/RecordKey.h"

namespace mpuevent::tool {

namespace {

// Behind the keys of the JSON.
constexpr std::array<std::string_view, 4> kOwnColumns = {"record", "hash", "tool_version",
                                                         "reason"};
constexpr std::string_view kToolVersion = MPUEVENT_VERSION;

// What a record that cannot be decoded has: its place, and what makes its key.
constexpr std::array<std::string_view, 8> kColumnsOfAny = {
    "index",        "offset",      "enclosure_serial", "controller_serial",
    "log_instance", "sequence_id", "timestamp",        "file"};

constexpr std::size_t kHeaderSize = 152;
constexpr std::string_view kTime = "time";  // depends on who asks

bool isOfAny(std::string_view column) {
  return std::find(kColumnsOfAny.begin(), kColumnsOfAny.end(), column) != kColumnsOfAny.end();
}

std::vector<std::string_view> allColumns() {
  FactRow facts;
  facts.read(EventFacts(ShowPayload::never));
  std::vector<std::string_view> columns = facts.names();
  std::erase(columns, kTime);
  columns.insert(columns.end(), kOwnColumns.begin(), kOwnColumns.end());
  return columns;
}

}  // namespace

/// What is used again for record after record.
class Batch::Decoder {
 public:
  /// Reads the facts; of a record that cannot be decoded those of an empty event, and returns why.
  std::string read(std::span<const unsigned char> record, const RecordPlace& place,
                   const Pegasus::FieldRecorder& fields) {
    std::string reason;
    std::unique_ptr<Pegasus::Quarn_Event> event = decode(record, reason);
    if (event == nullptr) {
      const std::array<unsigned char, kHeaderSize> none{};
      event = std::make_unique<Pegasus::Quarn_Event>(nullptr, 0U);
      undecodedFacts_.read({place.file, place.index, place.offset, none, {}, *event, nullptr});
      row_.read(undecodedFacts_);
    } else {
      facts_.read({place.file, place.index, place.offset, record,
                   EventDecoder::className(log::headerOf(record).source()), *event, &fields});
      row_.read(facts_);
    }
    return reason;
  }

  auto facts() const { return row_.facts(); }

 private:
  std::unique_ptr<Pegasus::Quarn_Event> decode(std::span<const unsigned char> record,
                                               std::string& reason) {
    if (record.size() < kHeaderSize) {
      reason = "a record has " + std::to_string(kHeaderSize) + " bytes or more, this one " +
               std::to_string(record.size());
      return nullptr;
    }
    try {
      return EventDecoder::decode(log::LogUnit{0, nullptr, record});
    } catch (const Pegasus::Exception& error) {
      reason = std::string_view(utf8_.assign(error.getMessage()));
      return nullptr;
    }
  }

  EventFacts facts_{ShowPayload::automatic};
  EventFacts undecodedFacts_{ShowPayload::automatic};
  FactRow row_;
  Utf8Text utf8_;
};

/// Appends cells.
class Batch::Row {
 public:
  explicit Row(Batch& batch) : batch_(batch) {}

  void operator()(std::monostate) { batch_.cells_.push_back({Cell::null, 0, 0}); }
  void operator()(std::uint64_t number) { batch_.cells_.push_back({Cell::number, number, 0}); }
  void operator()(std::string_view utf8) {
    const std::size_t begin = batch_.bytes_.size();
    batch_.bytes_ += utf8;
    end(Cell::text, begin);
  }
  void operator()(std::span<const unsigned char> payload) {
    const std::size_t begin = batch_.bytes_.size();
    appendHexBytes(batch_.bytes_, payload);
    end(Cell::text, begin);
  }
  void operator()(const BodyFields* fields) {
    const std::size_t begin = batch_.bytes_.size();
    appendElements(batch_.bytes_, *fields);
    end(Cell::text, begin);
  }
  void raw(std::span<const unsigned char> bytes) {
    const std::size_t begin = batch_.bytes_.size();
    batch_.bytes_ += {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    end(Cell::raw, begin);
  }

 private:
  void end(Cell::Kind kind, std::size_t begin) {
    batch_.cells_.push_back({kind, begin, batch_.bytes_.size() - begin});
  }

  Batch& batch_;
};

Batch::Batch() : decoder_(std::make_unique<Decoder>()) {}
Batch::~Batch() = default;

std::span<const std::string_view> Batch::columns() {
  static const std::vector<std::string_view> columns = allColumns();
  return columns;
}

std::size_t Batch::placeOf(std::string_view column) {
  const std::span<const std::string_view> all = columns();
  return static_cast<std::size_t>(std::find(all.begin(), all.end(), column) - all.begin());
}

void Batch::add(std::span<const unsigned char> record, const RecordPlace& place) {
  const Pegasus::FieldRecorder fields;
  addRow(record, decoder_->read(record, place, fields));
}

void Batch::addBroken(std::span<const unsigned char> bytes, const RecordPlace& place,
                      std::string_view reason) {
  const Pegasus::FieldRecorder fields;
  decoder_->read({}, place, fields);
  addRow(bytes, std::string(noRecord) += reason);
}

void Batch::addStored(std::span<const unsigned char> bytes, const RecordPlace& place,
                      std::string_view reason) {
  if (reason.starts_with(noRecord)) {
    addBroken(bytes, place, reason.substr(noRecord.size()));
  } else {
    add(bytes, place);
  }
}

// Of what the decoder has read; with a reason it could not be decoded.
void Batch::addRow(std::span<const unsigned char> record, const std::string& reason) {
  Row row(*this);
  for (const auto& [key, value] : decoder_->facts()) {
    const std::string_view name(key->name.data(), key->size);
    if (name == kTime) continue;
    std::visit(row, reason.empty() || isOfAny(name) ? value : FactValue());
  }
  row.raw(record);
  row.raw(hashOf(record));
  row(kToolVersion);
  reason.empty() ? row(std::monostate()) : row(std::string_view(reason));
  ++rows_;
}

void Batch::clear() {
  bytes_.clear();
  cells_.clear();
  rows_ = 0;
}

std::size_t Batch::bytes() const { return bytes_.size() + cells_.size() * sizeof(Cell); }

StoreValue Batch::value(std::size_t row, std::size_t column) const {
  const Cell& cell = cells_[row * columns().size() + column];
  if (cell.kind == Cell::null) return std::monostate();
  if (cell.kind == Cell::number) return cell.value;
  const std::string_view text =
      bytes_.view().substr(static_cast<std::size_t>(cell.value), cell.size);
  if (cell.kind == Cell::text) return text;
  return std::span(reinterpret_cast<const unsigned char*>(text.data()), text.size());
}

}  // namespace mpuevent::tool
