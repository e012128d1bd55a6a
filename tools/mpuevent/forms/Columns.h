#ifndef MPUEVENT_TOOL_COLUMNS_H
#define MPUEVENT_TOOL_COLUMNS_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "EventFacts.h"

namespace mpuevent::tool {

/// One thing to be shown of each event: a fact, or what its Body has under a key.
struct Column {
  std::string name;     ///< a fact's, or `fields.KEY` or `fields.KEY[*]`
  std::string element;  ///< KEY; empty for a fact
  bool allElements;     ///< else the first of that key
};

/// Names with commas between them. Throws `std::invalid_argument` for an unknown one.
std::vector<Column> parseColumns(std::string_view names);

/// All facts but the elements of the Body. `dated`: the dates of events are known.
std::vector<Column> everyColumn(bool dated);

/// What there is to write in a column; nothing if the event has it not.
using FactValue = std::variant<std::monostate, std::uint64_t, std::string_view,
                               std::span<const unsigned char>, const BodyFields*>;

/// The facts of one event, to be asked for by column.
class FactRow {
 public:
  /// The facts must last as long as values are used.
  void read(const EventFacts& facts);
  /// Valid until the next call.
  FactValue value(const Column& column);
  /// Also of an event that was not read.
  std::vector<std::string_view> names() const;
  /// All of them, in order.
  std::span<const std::pair<const FactKey*, FactValue>> facts() const { return facts_; }

  // For EventFacts.
  void number(const FactKey& key, std::uint64_t number) { add(key, number); }
  void offset(const FactKey& key, std::uint64_t offset) { add(key, offset); }
  void timestamp(const FactKey& key, std::uint64_t count, std::string_view) { add(key, count); }
  void text(const FactKey& key, std::string_view utf8) { add(key, utf8); }
  void coded(const FactKey& codeKey, unsigned code, const FactKey& wordKey, PaddedView word);
  void body(const FactKey& key, PaddedView utf8, const FactKey& fieldsKey,
            const BodyFields* fields);
  void detail(const FactKey& key, std::uint64_t number, bool) { add(key, number); }
  void payload(const FactKey& key, std::optional<std::span<const unsigned char>> bytes);
  void file(const FactKey& key, std::optional<PaddedView> name);
  void time(const FactKey& key, std::string_view date);

 private:
  static std::string_view nameOf(const FactKey& key) { return {key.name.data(), key.size}; }
  void add(const FactKey& key, const FactValue& value) { facts_.emplace_back(&key, value); }
  FactValue elements(const Column& column);

  std::vector<std::pair<const FactKey*, FactValue>> facts_;
  const BodyFields* fields_ = nullptr;
  std::string joined_;
};

}  // namespace mpuevent::tool

#endif
