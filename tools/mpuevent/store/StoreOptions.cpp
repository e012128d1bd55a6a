#include <CLI/CLI.hpp>

#include "store/StoreCommand.h"

namespace mpuevent::tool {

void addStoreOptions(CLI::App& command, StoreOptions& options) {
  command
      .add_option("DB", options.target,
                  "A file (SQLite), made if it is not there, or\n"
                  "postgresql://HOST/DATABASE")
      ->type_name("")
      ->required();
  addInputOptions(command, options.input);
  addChoosingOptions(command, options.choosing);
  command.add_flag("--again", options.again,
                   "Decode the records in the store anew, in place,\n"
                   "instead of reading files");
}

}  // namespace mpuevent::tool
