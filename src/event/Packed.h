#ifndef EVENT_PACKED_H
#define EVENT_PACKED_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <type_traits>
#include <utility>

// Tables as the library holds them. The rows of the sources have pointers to their texts, and every
// pointer costs a relocation and a write when the library is loaded. So the texts of a table are
// packed into one, at compile time, and what is left of a row tells where in it its own are. The
// rows of the sources themselves do not get into the library.

namespace mpuevent {

/// A text of a packed row: it stands so many bytes before this object, in the same table.
class TextBefore {
 public:
  constexpr TextBefore(std::size_t distance, std::size_t size)
      : distance_(static_cast<std::uint16_t>(distance)), size_(static_cast<std::uint16_t>(size)) {
    if (distance > UINT16_MAX || size > UINT16_MAX) throw "a table is too large";
  }
  // A copy would stand elsewhere.
  TextBefore(const TextBefore&) = delete;
  TextBefore& operator=(const TextBefore&) = delete;

  std::string_view view() const { return {reinterpret_cast<const char*>(this) - distance_, size_}; }

 private:
  std::uint16_t distance_;
  std::uint16_t size_;
};

/// From the beginning of any text of a table at least so many bytes can be read.
constexpr std::size_t readablePackedText = 32;

/// Rows, and before them their texts, each of which is there once.
template <class Row, std::size_t count, std::size_t textSize>
struct PackedTable {
  std::array<char, textSize> texts;
  Row rows[count];

  constexpr const Row* begin() const { return rows; }
  constexpr const Row* end() const { return rows + count; }
};

namespace detail {

/// How much there is before texts are left out that are there already.
struct TextCount {
  std::size_t texts;
  std::size_t characters;
};

/// All the texts of a table, one behind the other.
template <TextCount most>
struct PackedTexts {
  struct Place {
    std::size_t start;
    std::size_t size;
  };

  std::array<char, most.characters> bytes{};
  std::size_t size = 0;
  std::array<Place, most.texts> places{};
  std::size_t count = 0;

  /// Behind all of them if the text is not there. To look inside of others, too, would take
  /// compilers too long.
  constexpr std::size_t find(std::string_view text) const {
    for (std::size_t i = 0; i < count; ++i) {
      const Place& place = places[i];
      if (std::string_view(bytes.data() + place.start, place.size) == text) return place.start;
    }
    return size;
  }
  constexpr void add(std::string_view text) {
    if (find(text) < size) return;
    places[count++] = {size, text.size()};
    for (const char character : text) {
      if (character < ' ' || character > '~') throw "a text is not ASCII";
      bytes[size++] = character;
    }
  }
};

template <const auto& rows>
consteval TextCount countTexts() {
  TextCount count = {0, 1};
  for (const auto& row : rows) {
    row.packed([&count](std::string_view text) {
      ++count.texts;
      count.characters += text.size();
      return TextBefore(0, 0);
    });
  }
  return count;
}

template <const auto& rows>
consteval auto textsOf() {
  PackedTexts<countTexts<rows>()> texts;
  for (const auto& row : rows) {
    row.packed([&texts](std::string_view text) {
      texts.add(text);
      return TextBefore(0, 0);
    });
  }
  return texts;
}

/// A row whose texts come first in it, in the order in which it packs them.
template <std::size_t textSize, class Source, class Texts>
consteval auto packedRow(const Source& row, std::size_t index, const Texts& texts) {
  std::size_t before = textSize + index * sizeof(typename Source::Packed);
  return row.packed([&](std::string_view text) {
    const std::size_t distance = before - texts.find(text);
    before += sizeof(TextBefore);
    return TextBefore(distance, text.size());
  });
}

template <const auto& rows, std::size_t... indices>
consteval auto packedTable(std::index_sequence<indices...>) {
  using Row = typename std::remove_cvref_t<decltype(rows[0])>::Packed;
  constexpr auto texts = textsOf<rows>();
  constexpr std::size_t rowsSize = sizeof...(indices) * sizeof(Row);
  constexpr std::size_t needed =
      texts.size + readablePackedText - std::min(rowsSize, readablePackedText);
  constexpr std::size_t textSize = (needed + alignof(Row) - 1) / alignof(Row) * alignof(Row);
  std::array<char, textSize> bytes{};
  std::copy_n(texts.bytes.begin(), texts.size, bytes.begin());
  return PackedTable<Row, sizeof...(indices), textSize>{
      bytes, {packedRow<textSize>(rows[indices], indices, texts)...}};
}

}  // namespace detail

/// A table of rows, each of which has a type `Packed` and makes one of itself with
/// `packed(place)`, where `place(text)` gives a `TextBefore`.
template <const auto& rows>
inline constexpr auto packed =
    detail::packedTable<rows>(std::make_index_sequence<std::size(rows)>());

}  // namespace mpuevent

#endif
