#ifndef EVENT_TABLES_H
#define EVENT_TABLES_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "event/Packed.h"

namespace mpuevent {

/// One row of a code table.
struct CodeText {
  struct Packed {
    TextBefore text;
    std::uint32_t code;
  };
  constexpr Packed packed(auto place) const { return {place(text), code}; }

  std::uint32_t code;
  std::string_view text;
};

/// True if the rows' numbers rise: what `findRow` needs of a table, for a `static_assert`.
/// `number` names the member that holds a row's number.
template <class Row, class Number>
constexpr bool rising(std::span<const Row> rows, Number Row::*number) {
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (rows[i].*number <= rows[i - 1].*number) return false;
  }
  return true;
}

template <class Row, class Number, std::size_t size>
constexpr bool rising(const Row (&rows)[size], Number Row::*number) {
  return rising(std::span<const Row>(rows), number);
}

/// Whether there is a row for each number from 0 on: what a table needs whose rows are had by their
/// place, for a `static_assert`.
template <class Row, class Number, std::size_t size>
constexpr bool standInOrder(const Row (&rows)[size], Number Row::*number) {
  for (std::size_t i = 0; i < size; ++i) {
    if (rows[i].*number != static_cast<Number>(i)) return false;
  }
  return true;
}

/// The row with this number, or null. The rows' numbers rise.
template <class Row, class Number>
constexpr const Row* findRow(std::span<const Row> rows, Number Row::*number, std::uint32_t wanted) {
  if (rows.empty() || wanted < rows.front().*number || wanted > rows.back().*number) return nullptr;
  // Without gaps a row's place would follow from its number, and each gap before it moves it nearer
  // to the first. Most tables have few gaps or none.
  const std::size_t last = rows.size() - 1;
  const std::size_t place = wanted - rows.front().*number;
  if (place <= last && rows[place].*number == wanted) return &rows[place];
  const std::size_t gaps = std::size_t{rows.back().*number} - rows.front().*number - last;
  const std::size_t lowest = place > gaps ? place - gaps : 0;
  const auto row = std::lower_bound(
      rows.begin() + static_cast<std::ptrdiff_t>(lowest),
      rows.begin() + static_cast<std::ptrdiff_t>(std::min(place, last)), wanted,
      [number](const Row& candidate, std::uint32_t value) { return candidate.*number < value; });
  return (*row).*number == wanted ? &*row : nullptr;
}

template <class Row, class Number, std::size_t count, std::size_t textSize>
constexpr const Row* findRow(const PackedTable<Row, count, textSize>& table, Number Row::*number,
                             std::uint32_t wanted) {
  return findRow(std::span<const Row>(table), number, wanted);
}

/// A code table: packed rows whose codes rise, with gaps or without.
struct CodeTable {
  constexpr CodeTable() = default;
  /// Does not compile if the codes don't rise.
  template <std::size_t count, std::size_t textSize>
  // NOLINTNEXTLINE(google-explicit-constructor): a table is named where one is asked for.
  consteval CodeTable(const PackedTable<CodeText::Packed, count, textSize>& table) : rows(table) {
    if (!rising(rows, &CodeText::Packed::code)) throw "the codes of a table don't rise";
  }

  std::span<const CodeText::Packed> rows;
};

/// The text of a code; empty if it has none.
inline std::string_view textOf(CodeTable table, std::uint64_t code) {
  if (code > UINT32_MAX) return {};
  const CodeText::Packed* row =
      findRow(table.rows, &CodeText::Packed::code, static_cast<std::uint32_t>(code));
  return row == nullptr ? std::string_view{} : row->text.view();
}

}  // namespace mpuevent

#endif
