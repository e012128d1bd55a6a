#include "redaction/RedactOption.h"

#include <CLI/CLI.hpp>

namespace mpuevent::tool {

void addRedactOption(CLI::App& command, bool& redact) {
  command
      .add_flag("--redact", redact,
                "Serials, and names and addresses of hosts, become\n"
                "enclosure-1, controller-2, host-3 ... All is read\n"
                "twice, standard input by way of a temporary file")
      ->group("Output");
}

}  // namespace mpuevent::tool
