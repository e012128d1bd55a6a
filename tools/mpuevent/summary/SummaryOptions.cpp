#include "WordOption.h"
#include "summary/SummaryCommand.h"

namespace mpuevent::tool {

namespace {

constexpr char kFooter[] =
    R"(What is chosen decides which events are counted; damage and the sequence
of ids, with what is missing in it, are those of all that is read.

Examples:
  mpuevent summary array.cmap
  mpuevent summary -r /var/log/arrays -o json | jq '.logs[].missing')";

}  // namespace

void addSummaryOptions(CLI::App& command, SummaryOptions& options) {
  command.footer(kFooter);
  addInputOptions(command, options.input);
  addChoosingOptions(command, options.choosing);
  addWordOption<SummaryOutput>(command, "-o,--output", options.output,
                               {
                                   {"text", SummaryOutput::text},
                                   {"json", SummaryOutput::json}
  },
                               "text (default) or json")
      ->type_name("FORM")
      ->group("Output");
}

}  // namespace mpuevent::tool
