#include "Columns.h"

#include <algorithm>
#include <stdexcept>

namespace mpuevent::tool {

namespace {

constexpr std::string_view kFields = "fields";
constexpr std::string_view kElement = "fields.";
constexpr std::string_view kAll = "[*]";
constexpr std::string_view kBetween = "; ";

std::vector<std::string_view> factNames() {
  FactRow row;
  row.read(EventFacts(ShowPayload::never));
  return row.names();
}

Column parseColumn(std::string_view name, const std::vector<std::string_view>& facts) {
  if (name.starts_with(kElement) && name.size() > kElement.size()) {
    std::string_view element = name.substr(kElement.size());
    const bool all = element.size() > kAll.size() && element.ends_with(kAll);
    if (all) element.remove_suffix(kAll.size());
    return {std::string(name), std::string(element), all};
  }
  if (std::find(facts.begin(), facts.end(), name) != facts.end())
    return {std::string(name), {}, false};
  std::string known;
  for (const std::string_view fact : facts) known.append(fact).append(", ");
  throw std::invalid_argument("'" + std::string(name) + "' is none of " + known +
                              "fields.KEY, fields.KEY[*]");
}

}  // namespace

std::vector<Column> parseColumns(std::string_view names) {
  const std::vector<std::string_view> facts = factNames();
  std::vector<Column> columns;
  for (;;) {
    const std::size_t end = std::min(names.find(','), names.size());
    columns.push_back(parseColumn(names.substr(0, end), facts));
    if (end == names.size()) return columns;
    names.remove_prefix(end + 1);
  }
}

std::vector<Column> everyColumn(bool dated) {
  std::vector<Column> columns;
  for (const std::string_view name : factNames()) {
    if (name != kFields && (dated || name != "time"))
      columns.push_back({std::string(name), {}, false});
  }
  return columns;
}

void FactRow::read(const EventFacts& facts) {
  facts_.clear();
  facts.describeEvent(*this);
  facts.describeBody(*this);
  facts.describeRecord(*this);
}

std::vector<std::string_view> FactRow::names() const {
  std::vector<std::string_view> names;
  for (const auto& [key, value] : facts_) names.push_back(nameOf(*key));
  return names;
}

FactValue FactRow::value(const Column& column) {
  if (!column.element.empty()) return elements(column);
  const auto fact = std::find_if(facts_.begin(), facts_.end(), [&column](const auto& known) {
    return nameOf(*known.first) == column.name;
  });
  return fact != facts_.end() ? fact->second : FactValue();
}

FactValue FactRow::elements(const Column& column) {
  bool any = false;
  joined_.clear();
  if (fields_ == nullptr) return {};
  fields_->forEach([&](const BodyField& field) {
    if (field.kind != BodyField::value || std::string_view(field.key) != column.element) return;
    if (any && !column.allElements) return;
    if (any) joined_ += kBetween;
    joined_ += std::string_view(field.text);
    any = true;
  });
  return any ? FactValue(std::string_view(joined_)) : FactValue();
}

void FactRow::coded(const FactKey& codeKey, unsigned code, const FactKey& wordKey,
                    PaddedView word) {
  add(codeKey, std::uint64_t{code});
  add(wordKey, std::string_view(word));
}

void FactRow::body(const FactKey& key, PaddedView utf8, const FactKey& fieldsKey,
                   const BodyFields* fields) {
  add(key, std::string_view(utf8));
  add(fieldsKey, fields != nullptr ? FactValue(fields) : FactValue());
  fields_ = fields;
}

void FactRow::payload(const FactKey& key, std::optional<std::span<const unsigned char>> bytes) {
  add(key, bytes ? FactValue(*bytes) : FactValue());
}

void FactRow::file(const FactKey& key, std::optional<PaddedView> name) {
  add(key, name ? FactValue(std::string_view(*name)) : FactValue());
}

void FactRow::time(const FactKey& key, std::string_view date) {
  add(key, date.empty() ? FactValue() : FactValue(date));
}

}  // namespace mpuevent::tool
