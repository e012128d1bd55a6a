#include "WordOption.h"
#include "redaction/RedactOption.h"
#include "summary/SummaryCommand.h"

namespace mpuevent::tool {

namespace {

constexpr char kSummaryFooter[] =
    R"(What is chosen decides which events are counted; damage and the sequence
of ids, with what is missing in it, are those of all that is read.

Examples:
  mpuevent summary array.cmap
  mpuevent summary array.cmap --html array.html
  mpuevent summary -r /var/log/arrays -o json | jq '.logs[].missing')";

}  // namespace

void addSummaryOptions(CLI::App& command, SummaryOptions& options) {
  command.footer(kSummaryFooter);
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
  command
      .add_option("--html", options.page,
                  "A page to look at as well, one file that needs\n"
                  "no other and no network")
      ->type_name("OUT")
      ->group("Output");
  addRedactOption(command, options.redact);
}

}  // namespace mpuevent::tool
