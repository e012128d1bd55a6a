#ifndef MPUEVENT_TOOL_STORE_CHOICESQL_H
#define MPUEVENT_TOOL_STORE_CHOICESQL_H

#include <string>
#include <vector>

#include "log/choosing/Choice.h"

namespace mpuevent::tool {

/// A condition in SQL and the texts to bind to its parameters, $1, $2 and so on.
struct SqlCondition {
  std::string sql;  ///< "true" if all are chosen
  std::vector<std::string> texts;
};

/// Holds for at least the events that are chosen.
SqlCondition conditionOf(const log::Choice& choice);

}  // namespace mpuevent::tool

#endif
