#include "Options.h"

#include <CLI/CLI.hpp>
#include <map>

namespace mpuevent::tool {

namespace {

const std::map<std::string, log::LogForm> kInputForms = {
    {"auto",     log::LogForm::automatic},
    {"messages", log::LogForm::messages },
    {"records",  log::LogForm::records  }
};
const std::map<std::string, OutputForm> kOutputForms = {
    {"text",  OutputForm::text },
    {"line",  OutputForm::line },
    {"jsonl", OutputForm::jsonl}
};

constexpr char kFooter[] = R"(Input forms:
  messages   64-byte CMAP header and record, back to back
  records    raw records of 152 + evStructLength bytes, back to back
  auto       whichever of the two the lengths in the file chain for

Output forms:
  text       one block of labelled lines an event
  line       one line an event, as the library prints it
  jsonl      one JSON object an event and line; "fields" is the Body taken apart

Examples:
  mpuevent decode array.cmap
  mpuevent decode -o jsonl array.cmap | jq -c 'select(.event_type == "Error") | .summary'
  ssh array cat /var/log/events | mpuevent decode --input records -

Exit codes:
  0  everything was decoded
  1  there was nothing to decode
  2  wrong usage, or a file could not be read or the output not be written
  3  damage in a file; all that could be decoded was written)";

}  // namespace

std::variant<DecodeOptions, Answer, UsageError> parseArguments(int argc, const char* const* argv) {
  CLI::App app("Decodes the event logs of a storage controller.", "mpuevent");
  app.set_version_flag("--version", "mpuevent " MPUEVENT_VERSION, "Print the version and exit");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.footer(kFooter);

  DecodeOptions options;
  std::string input = "auto";
  std::string output = "text";
  CLI::App* decode = app.add_subcommand("decode", "Write the events of log files in readable form");
  decode->footer(kFooter);
  decode->add_option("FILE", options.files, "Log files; - or none is standard input")
      ->type_name("");
  decode->add_option("-o,--output", output, "text (default), line or jsonl")
      ->check(CLI::IsMember(&kOutputForms).description(""))
      ->type_name("FORM");
  decode->add_option("--input", input, "auto (default), messages or records")
      ->check(CLI::IsMember(&kInputForms).description(""))
      ->type_name("FORM");
  decode->add_flag("--trace", options.trace, "Write the library's trace lines to standard error");

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    return Answer{app.help()};
  } catch (const CLI::CallForVersion& version) {
    return Answer{version.what() + std::string("\n")};
  } catch (const CLI::ParseError& error) {
    return UsageError{error.what(), app.help()};
  }
  if (!decode->parsed()) {
    return UsageError{{}, app.help()};
  }
  options.input = kInputForms.at(input);
  options.output = kOutputForms.at(output);
  if (options.files.empty()) options.files.emplace_back("-");
  return options;
}

}  // namespace mpuevent::tool
