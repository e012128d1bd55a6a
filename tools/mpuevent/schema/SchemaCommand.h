#ifndef MPUEVENT_TOOL_SCHEMA_SCHEMACOMMAND_H
#define MPUEVENT_TOOL_SCHEMA_SCHEMACOMMAND_H

#include <string_view>

#include "ExitCode.h"
#include "schema/SchemaTexts.h"

namespace CLI {
class App;
}

namespace mpuevent::tool {

/// `mpuevent schema`.
struct SchemaOptions {
  std::string_view text = eventSchema;
};

/// The options must last until the command has been parsed.
void addSchemaOptions(CLI::App& command, SchemaOptions& options);

/// Throws what Output throws.
ExitCode schema(const SchemaOptions& options);

}  // namespace mpuevent::tool

#endif
