#include "InputOptions.h"

#include "WordOption.h"
#include "log/input/LogSource.h"

namespace mpuevent::tool {

void addInputForm(CLI::App& command, log::LogForm& form) {
  using log::LogForm;
  addWordOption<LogForm>(command, "--input", form,
                         {
                             {"auto",     LogForm::automatic},
                             {"messages", LogForm::messages },
                             {"records",  LogForm::records  }
  },
                         "auto (default), messages or records")
      ->type_name("FORM")
      ->group("Input");
}

void addInputOptions(CLI::App& command, InputOptions& options) {
  command
      .add_option("FILE", options.selection.names,
                  log::unpacks ? "Logs, directories of logs, compressed logs,\n"
                                 "archives; - or none is standard input"
                               : "Logs, directories of logs; - or none is standard\n"
                                 "input (this build does not unpack anything)")
      ->type_name("")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  addInputForm(command, options.form);
  command
      .add_flag("-r,--recursive", options.selection.recursive,
                "Directories with those in them; files that\n"
                "begin with \".\" are left out")
      ->group("Input");
  CLI::Option* const names =
      command
          .add_option("--files-from", options.selection.namesFile,
                      "Read names of logs from LIST, one a line;\n- is standard input")
          ->type_name("LIST")
          ->group("Input");
  command
      .add_flag_callback(
          "--null", [&options] { options.selection.nameEnd = '\0'; },
          "The names in LIST end with NUL, as find -print0\nwrites them")
      ->needs(names)
      ->group("Input");
  command
      .add_flag("-v,--verbose", options.verbose,
                "Of each file how many bytes were decoded,\n"
                "skipped and padding")
      ->group("Input");
}

}  // namespace mpuevent::tool
