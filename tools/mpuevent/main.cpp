#include <csignal>
#include <exception>
#include <string>
#include <system_error>
#include <variant>

#include "CommandLine.h"
#include "Output.h"

namespace {

using namespace mpuevent::tool;

ExitCode run(const Command& command) { return command(); }

ExitCode run(const Answer& answer) {
  Output output;
  output.text() += std::string_view(answer.text);
  output.close();
  return decodedAll;
}

ExitCode run(const UsageError& error) {
  if (error.reason.empty()) {
    writeToStandardError(error.help);
  } else {
    complain(error.reason + (error.reason.back() == '?' ? "" : "; see 'mpuevent --help'"));
  }
  return failed;
}

}  // namespace

int main(int argc, char** argv) {
  // A reader that goes away shows as an error of the write.
  std::signal(SIGPIPE, SIG_IGN);
  // So does a file that may not grow.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return std::visit([](const auto& request) { return run(request); }, parseArguments(argc, argv));
  } catch (const ClosedPipe&) {
    return decodedAll;
  } catch (const std::system_error& error) {
    complain("standard output: " + error.code().message());
  } catch (const std::exception& error) {
    complain(error.what());
  }
  return failed;
}
