#include "InputOptions.h"

#include "Choice.h"

namespace mpuevent::tool {

void addInputOptions(CLI::App& command, InputOptions& options) {
  using log::LogForm;
  command.add_option("FILE", options.files, "Logs; - or none is standard input")
      ->type_name("")
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  addChoice<LogForm>(command, "--input", options.form,
                     {
                         {"auto",     LogForm::automatic},
                         {"messages", LogForm::messages },
                         {"records",  LogForm::records  }
  },
                     "auto (default), messages or records")
      ->type_name("FORM")
      ->group("Input");
}

}  // namespace mpuevent::tool
