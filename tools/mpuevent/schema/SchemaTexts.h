#ifndef MPUEVENT_TOOL_SCHEMA_SCHEMATEXTS_H
#define MPUEVENT_TOOL_SCHEMA_SCHEMATEXTS_H

#include <string_view>

namespace mpuevent::tool {

// The files schema/*.json as texts in the program.
extern const std::string_view eventSchema;
extern const std::string_view summarySchema;
extern const std::string_view explainSchema;

}  // namespace mpuevent::tool

#endif
