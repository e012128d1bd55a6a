#include "FollowOptions.h"

#include <CLI/CLI.hpp>

namespace mpuevent::tool {

void addFollowOptions(CLI::App& command, FollowOptions& options) {
  command
      .add_flag("-f,--follow", options.follow,
                "Wait for more, and go on when FILE is rotated or\n"
                "truncated; Ctrl-C ends it")
      ->group("Input");
  command
      .add_option("--cursor-file", options.cursorFile,
                  "Begin behind the event that CURSOR tells of, and\n"
                  "keep the place there")
      ->type_name("CURSOR")
      ->group("Input");
}

}  // namespace mpuevent::tool
