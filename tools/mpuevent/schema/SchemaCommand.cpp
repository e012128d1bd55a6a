#include "schema/SchemaCommand.h"

#include "Output.h"
#include "WordOption.h"

namespace mpuevent::tool {

void addSchemaOptions(CLI::App& command, SchemaOptions& options) {
  command.footer("Example:\n  mpuevent schema | jq '.properties | keys'");
  addWordOption<std::string_view>(
      command, "OF", options.text,
      {
          {"event",   eventSchema  },
          {"summary", summarySchema},
          {"explain", explainSchema}
  },
      "event (default): a line of decode -o jsonl;\n"
      "summary, explain: what they write with -o json")
      ->type_name("");
}

ExitCode schema(const SchemaOptions& options) {
  Output output;
  output.text() += options.text;
  output.close();
  return decodedAll;
}

}  // namespace mpuevent::tool
