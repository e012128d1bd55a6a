#include <stdexcept>
#include <string>

#include "DecodeCommand.h"
#include "WordOption.h"
#include "forms/Columns.h"
#include "redaction/RedactOption.h"

namespace mpuevent::tool {

namespace {

constexpr char kDecodeFooter[] = R"(Input forms:
  messages   64-byte CMAP header and record, back to back
  records    raw records of 152 + evStructLength bytes, back to back
  auto       either, or one after the other, as recognised

Output forms:
  text       one block of labelled lines an event
  short      one line an event, what matters first, cut at the terminal's width
  line       one line an event, as the library prints it
  jsonl      one JSON object an event and line; "fields" is the Body taken apart
  json       one JSON array of these objects
  csv        a line of comma-separated values an event (RFC 4180)
  raw        the messages and records as they are: a smaller log, without damage
             and padding; not on a terminal

Examples:
  mpuevent decode array.cmap
  mpuevent decode -o jsonl array.cmap |
    jq -c 'select(.event_type == "Error") | .summary'
  ssh array cat /var/log/events | mpuevent decode --input records -)";

void addColumns(CLI::App& command, DecodeOptions& options) {
  CLI::Option* const columns = command.add_option("--fields", options.columns,
                                                  "Only these keys, in this order, for csv, jsonl\n"
                                                  "and json: summary,fields.KEY (the first KEY in\n"
                                                  "the Body),fields.KEY[*] (all, with \"; \")");
  columns->type_name("NAME,...")->group("Output");
  columns->check(CLI::Validator(
      [](const std::string& names) {
        try {
          parseColumns(names);
        } catch (const std::invalid_argument& error) {
          return std::string(error.what());
        }
        return std::string();
      },
      ""));
  columns->excludes("--no-body")->excludes("--no-fields");
  command.add_flag("--no-header", options.noHeader, "CSV without the line of names")
      ->group("Output");
}

void addForm(CLI::App& command, DecodeOptions& options) {
  addWordOption<OutputForm>(command, "-o,--output", options.output,
                            {
                                {"text",  OutputForm::text     },
                                {"short", OutputForm::shortLine},
                                {"line",  OutputForm::line     },
                                {"jsonl", OutputForm::jsonl    },
                                {"json",  OutputForm::json     },
                                {"csv",   OutputForm::csv      },
                                {"raw",   OutputForm::raw      }
  },
                            "text (default), short, line, jsonl, json, csv\nor raw")
      ->type_name("FORM")
      ->group("Output");
  addWordOption<ShowPayload>(command, "--payload", options.payload,
                             {
                                 {"auto",   ShowPayload::automatic},
                                 {"always", ShowPayload::always   },
                                 {"never",  ShowPayload::never    }
  },
                             "The payload in hex: auto (default; if the\n"
                             "decoder shows nothing of it or the lengths\n"
                             "disagree), always or never")
      ->type_name("WHEN")
      ->group("Output");
}

void addLook(CLI::App& command, DecodeOptions& options) {
  command
      .add_flag("--exact", options.exact,
                "Lines to the letter, control characters and all,\n"
                "unless they go to a terminal")
      ->group("Output");
  addWordOption<Colour>(
      command, "--color", options.colour,
      {
          {"auto",   Colour::automatic},
          {"always", Colour::always   },
          {"never",  Colour::never    }
  },
      "Coloured text, short: auto (default; on a terminal),\n"
      "always or never")
      ->type_name("WHEN")
      ->group("Output");
}

}  // namespace

void addDecodeOptions(CLI::App& command, DecodeOptions& options) {
  command.footer(kDecodeFooter);
  addInputOptions(command, options.input);
  addFollowOptions(command, options.following);
  addChoosingOptions(command, options.choosing);
  command.add_flag("--count", options.count, "Only how many, a line a file and the total")
      ->group("Number of events");
  addForm(command, options);
  command
      .add_flag("--no-body", options.noBody, "JSON without \"body\"; \"fields\" has it taken apart")
      ->group("Output");
  command.add_flag("--no-fields", options.noFields, "JSON without \"fields\"")->group("Output");
  addColumns(command, options);
  addRedactOption(command, options.redact);
  addLook(command, options);
  command.add_flag("--trace", options.trace, "The library's trace lines, on standard error")
      ->group("Output");
}

}  // namespace mpuevent::tool
