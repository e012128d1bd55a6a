#include "InputOptions.h"
#include "WordOption.h"
#include "explain/ExplainCommand.h"

namespace mpuevent::tool {

namespace {

constexpr char kExplainFooter[] = R"(What the bytes are found to be:
  KEY                 makes the text of this header field or element of the
                      Body: GROUP.KEY in a group, KEY[2] is the third of
                      several; "summary" if the Summary has it, too
  decides the layout  what elements there are, the class of the event or its
                      event id depend on it, or the Summary alone
  not shown           changes nothing, whatever its value
  not examined        of a long record: what lies between two bytes examined
                      that make different things; the output says so, and
                      what of the rest was sampled

Examples:
  mpuevent explain array.cmap --index 17
  mpuevent explain array.cmap --at 0x1a2b -o json | jq -r '.[].field'
  mpuevent explain --hex < mail.txt)";

}  // namespace

void addExplainOptions(CLI::App& command, ExplainOptions& options) {
  command.footer(kExplainFooter);
  command.add_option("FILE", options.file, "The log; - or none is standard input")->type_name("");
  CLI::Option* at = command.add_option("--at", options.at, "The event that has a byte at OFFSET");
  CLI::Option* index = command.add_option("--index", options.index, "The event number N, from 0");
  CLI::Option* sequence =
      command.add_option("--sequence", options.sequence, "The first event of sequence id ID");
  at->type_name("OFFSET")->excludes(index)->excludes(sequence)->group("Event");
  index->type_name("N")->excludes(sequence)->group("Event");
  sequence->type_name("ID")->group("Event");
  addInputForm(command, options.form);
  command
      .add_flag("--hex", options.hex,
                "FILE is hex text with one event, such as xxd,\n"
                "hexdump and od write or a mail holds")
      ->excludes(at)
      ->excludes(index)
      ->excludes(sequence)
      ->group("Input");
  addWordOption<ExplainOutput>(command, "-o,--output", options.output,
                               {
                                   {"text", ExplainOutput::text},
                                   {"json", ExplainOutput::json}
  },
                               "text (default) or json")
      ->type_name("FORM")
      ->group("Output");
}

}  // namespace mpuevent::tool
