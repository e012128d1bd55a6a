#ifndef MPUEVENT_TOOL_STORE_BATCH_H
#define MPUEVENT_TOOL_STORE_BATCH_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include "forms/TextBuffer.h"

namespace mpuevent::tool {

/// Where a record was read.
struct RecordPlace {
  std::optional<std::string_view> file;  ///< its name as given, in any bytes; none: not a file
  std::uint64_t index = 0;               ///< of the event in the file
  std::uint64_t offset = 0;              ///< of its message or record in the file
};

/// What a column of a row holds; text is valid UTF-8.
using StoreValue =
    std::variant<std::monostate, std::uint64_t, std::string_view, std::span<const unsigned char>>;

/// Rows for a store: what the JSON of an event has, the record itself, and what is to be known of
/// both. A record is decoded when it is added, so batches can be made on several threads, each by
/// one.
class Batch {
 public:
  Batch();
  ~Batch();
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  /// Any bytes. A record that cannot be decoded makes a row, too, with the reason.
  void add(std::span<const unsigned char> record, const RecordPlace& place);
  /// Bytes that were to hold records and don't, as a row with the reason behind `noRecord`.
  void addBroken(std::span<const unsigned char> bytes, const RecordPlace& place,
                 std::string_view reason);
  /// What a store has, decoded anew; what was no record stays none.
  void addStored(std::span<const unsigned char> bytes, const RecordPlace& place,
                 std::string_view reason);
  /// With this begins the reason of what is not to be decoded again.
  static constexpr std::string_view noRecord = "no record: ";
  /// Makes room for another batch.
  void clear();

  std::size_t rows() const { return rows_; }
  bool empty() const { return rows_ == 0; }
  /// What they take in memory.
  std::size_t bytes() const;

  /// The names of the columns, in their order; they are those of the JSON's keys.
  static std::span<const std::string_view> columns();
  static std::size_t placeOf(std::string_view column);
  /// Valid until something is added. `column` is a place in columns().
  StoreValue value(std::size_t row, std::size_t column) const;

 private:
  class Decoder;
  class Row;

  /// Texts and bytes lie in `bytes_`.
  struct Cell {
    enum Kind : std::uint8_t { null, number, text, raw };
    Kind kind;
    std::uint64_t value;  // or where they begin
    std::size_t size;
  };

  void addRow(std::span<const unsigned char> record, const std::string& reason);

  std::unique_ptr<Decoder> decoder_;
  TextBuffer bytes_;
  std::vector<Cell> cells_;
  std::size_t rows_ = 0;
};

}  // namespace mpuevent::tool

#endif
