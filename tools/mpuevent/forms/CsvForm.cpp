#include "Columns.h"
#include "EventForm.h"
#include "Numbers.h"
#include "Utf8.h"

namespace mpuevent::tool {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// Appends values to a table's cells.
class CsvCell {
 public:
  CsvCell(TextBuffer& to, bool visible) : to_(to), visible_(visible) {}

  void operator()(std::monostate) {}
  void operator()(std::uint64_t number) { appendDecimal(to_, number); }
  void operator()(std::span<const unsigned char> bytes) { appendHexBytes(to_, bytes); }
  // No table has a cell for them.
  void operator()(const BodyFields*) {}
  void operator()(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
      append(text);
      return;
    }
    to_ += '"';
    for (std::size_t quote = text.find('"'); quote != std::string_view::npos;
         quote = text.find('"')) {
      append(text.substr(0, quote + 1));
      to_ += '"';
      text.remove_prefix(quote + 1);
    }
    append(text);
    to_ += '"';
  }

 private:
  void append(std::string_view text) {
    if (visible_) {
      appendVisible(to_, text);
    } else {
      to_ += text;
    }
  }

  TextBuffer& to_;
  const bool visible_;
};

class CsvForm : public EventForm {
 public:
  explicit CsvForm(const CsvLayout& layout)
      : layout_(layout),
        facts_(layout.payload),
        columns_(layout.columns.empty() ? everyColumn(layout.dated)
                                        : parseColumns(layout.columns)) {}

  void begin(TextBuffer& to) override {
    if (!layout_.header) return;
    line(to, [](const Column& column) { return FactValue(std::string_view(column.name)); });
  }
  void write(const DecodedEvent& decoded, TextBuffer& to) override {
    facts_.read(decoded);
    row_.read(facts_);
    line(to, [this](const Column& column) { return row_.value(column); });
  }

 private:
  template <typename ValueOf>
  void line(TextBuffer& to, const ValueOf& valueOf) {
    CsvCell cell(to, layout_.visible);
    bool first = true;
    for (const Column& column : columns_) {
      if (!first) to += ',';
      first = false;
      std::visit(cell, valueOf(column));
    }
    to += kLineEnd;
  }

  const CsvLayout layout_;
  EventFacts facts_;
  const std::vector<Column> columns_;
  FactRow row_;
};

}  // namespace

std::unique_ptr<EventForm> makeCsvForm(const CsvLayout& layout) {
  return std::make_unique<CsvForm>(layout);
}

}  // namespace mpuevent::tool
