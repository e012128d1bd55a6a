#include "store/ChoiceSql.h"

#include <algorithm>

#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

using log::Choice;
using log::HeaderNumber;
using log::NumberRange;

// The types that have a word: their column is the one with an index.
bool areKnownTypes(const std::vector<NumberRange>& ranges) {
  return std::all_of(ranges.begin(), ranges.end(),
                     [](const NumberRange& range) { return range.first >= 1 && range.last <= 3; });
}

std::string columnOf(const Choice::NumberTest& test) {
  switch (test.number) {
    case HeaderNumber::timestamp:
      return "timestamp";
    case HeaderNumber::type:
      return areKnownTypes(test.ranges) ? "event_type_code" : "raw_event_type";
    case HeaderNumber::source:
      return "source_code";
    case HeaderNumber::category:
      return "category_code";
    case HeaderNumber::code:
      return "event_code";
    case HeaderNumber::slot:
      return "controller_slot";
    case HeaderNumber::logInstance:
      return "log_instance";
    case HeaderNumber::sequenceId:
      return "sequence_id";
  }
  return {};
}

void appendNumbers(std::string& sql, const Choice::NumberTest& test) {
  const std::string column = columnOf(test);
  std::string any;
  for (const NumberRange& range : test.ranges) {
    if (!any.empty()) any += " OR ";
    any += column + (range.first == range.last ? " = " + std::to_string(range.first)
                                               : " BETWEEN " + std::to_string(range.first) +
                                                     " AND " + std::to_string(range.last));
  }
  sql += (test.negated ? " AND NOT (" : " AND (") + (any.empty() ? "false" : any) + ")";
}

void appendTexts(SqlCondition& condition, const Choice::TextTest& test) {
  std::string& sql = condition.sql;
  sql += test.text == log::HeaderText::enclosureSerial ? " AND enclosure_serial"
                                                       : " AND controller_serial";
  sql += test.negated ? " NOT IN (" : " IN (";
  bool first = true;
  for (const std::string& bytes : test.texts) {
    // As the column shows them.
    Utf8Text utf8;
    condition.texts.emplace_back(std::string_view(utf8.assignBytes(bytes)));
    if (!first) sql += ", ";
    first = false;
    sql += "$" + std::to_string(condition.texts.size());
  }
  sql += ")";
}

}  // namespace

SqlCondition conditionOf(const Choice& choice) {
  SqlCondition condition{"true", {}};
  for (const Choice::NumberTest& test : choice.numbers()) appendNumbers(condition.sql, test);
  for (const Choice::TextTest& test : choice.texts()) appendTexts(condition, test);
  return condition;
}

}  // namespace mpuevent::tool
