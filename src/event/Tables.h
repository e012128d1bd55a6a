#ifndef EVENT_TABLES_H
#define EVENT_TABLES_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace mpuevent {

/// One row of a code table.
struct CodeText {
  std::uint32_t code;
  std::string_view text;
};

/// True if the rows' numbers rise: what `findRow` needs of a table, for a `static_assert`.
/// `number` names the member that holds a row's number.
template <class Row>
constexpr bool rising(std::span<const Row> rows, std::uint32_t Row::*number) {
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (rows[i].*number <= rows[i - 1].*number) return false;
  }
  return true;
}

template <class Row, std::size_t size>
constexpr bool rising(const Row (&rows)[size], std::uint32_t Row::*number) {
  return rising(std::span<const Row>(rows), number);
}

/// The row with this number, or null.
template <class Row>
constexpr const Row* findRow(std::span<const Row> rows, std::uint32_t Row::*number,
                             std::uint32_t wanted) {
  const auto row = std::lower_bound(
      rows.begin(), rows.end(), wanted,
      [number](const Row& candidate, std::uint32_t value) { return candidate.*number < value; });
  return row != rows.end() && (*row).*number == wanted ? &*row : nullptr;
}

template <class Row, std::size_t size>
constexpr const Row* findRow(const Row (&rows)[size], std::uint32_t Row::*number,
                             std::uint32_t wanted) {
  return findRow(std::span<const Row>(rows), number, wanted);
}

/// A code table: rows whose codes rise, with gaps or without.
struct CodeTable {
  constexpr CodeTable() = default;
  /// Does not compile if the codes don't rise.
  template <std::size_t size>
  // NOLINTNEXTLINE(google-explicit-constructor): a table is named where one is asked for.
  consteval CodeTable(const CodeText (&table)[size]) : rows(table) {
    if (!rising(rows, &CodeText::code)) throw "the codes of a table don't rise";
  }

  std::span<const CodeText> rows;
};

/// The text of a code; empty if it has none.
constexpr std::string_view textOf(CodeTable table, std::uint64_t code) {
  if (code > UINT32_MAX) return {};
  const CodeText* row = findRow(table.rows, &CodeText::code, static_cast<std::uint32_t>(code));
  return row == nullptr ? std::string_view{} : row->text;
}

}  // namespace mpuevent

#endif
