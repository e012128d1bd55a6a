#include "CommandLine.h"

#include <MPUEvent/Version.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "DecodeCommand.h"
#include "OfferedWords.h"
#include "explain/ExplainCommand.h"
#include "road/AuditCommand.h"
#include "road/SendCommand.h"
#include "road/StreamCommand.h"
#include "road/WorkCommand.h"
#include "schema/SchemaCommand.h"
#include "store/StoreCommand.h"
#include "summary/SummaryCommand.h"

namespace mpuevent::tool {

namespace {

constexpr char kCommandLineFooter[] = "'mpuevent help COMMAND' tells of a command's options.";
constexpr char kExitCodes[] = R"(
Exit codes:
  0  everything was decoded
  1  nothing was chosen, or there was nothing to decode;
     of audit: the store lacks something
  2  wrong usage, or a file could not be read or the output not be written
  3  damage in a file, or no log; all that could be decoded was written
)";

constexpr std::size_t kHelpColumn = 26;

/// The commands and, once parsed, the one that was chosen.
class CommandLine {
 public:
  CommandLine() {
    app_.footer(kCommandLineFooter);
    addHelpFlags(app_);
    add("decode", "Write the events of logs in readable form", decode_, addDecodeOptions, decode);
    add("explain", "Show which bytes of an event make which of its fields", explain_,
        addExplainOptions, explain);
    add("store", "Keep events in a database, each once", store_, addStoreOptions, store);
    add("summary", "Tell what is in logs, on a page", summary_, addSummaryOptions, summary);
    add("send", "Send the records of logs to where workers get them", send_, addSendOptions, send);
    add("work", "Take records that were sent into a store", work_, addWorkOptions, work);
    add("audit", "Tell what a store lacks", audit_, addAuditOptions, audit);
    add("stream", "Make what send and work need on the servers, or tell how it is", stream_,
        addStreamOptions, stream);
    add("schema", "Print the JSON Schema of what other commands write", schema_, addSchemaOptions,
        schema);
    CLI::App* help = add("help", "Tell of the program, or of a command");
    help->add_option("COMMAND", helpTopic_, "The command to tell of")
        ->type_name("")
        ->check(offering(namesOfCommands()));
    help->callback([this] { answerHelp(); });
    // A file may be named like a command.
    app_.require_subcommand(0, 1);
  }

  std::variant<Command, Answer, UsageError> parse(int argc, const char* const* argv) {
    if (argc < 2) return UsageError{{}, help(app_)};
    addOptions(argv[1]);
    try {
      app_.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
      const auto chosen = app_.get_subcommands();
      return Answer{help(chosen.empty() ? app_ : *chosen.front())};
    } catch (const CLI::CallForVersion& version) {
      return Answer{version.what() + std::string("\n")};
    } catch (const CLI::ParseError& error) {
      return UsageError{reasonOf(error, argv[1]), help(app_)};
    }
    if (answer_) return *answer_;
    if (command_) return command_;
    return UsageError{{}, help(app_)};
  }

  void show(const std::function<void(CLI::App&)>& show) {
    addOptions({});
    show(app_);
    for (CLI::App* command : app_.get_subcommands([](CLI::App*) { return true; })) show(*command);
  }

 private:
  static void addHelpFlags(CLI::App& app) {
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("-V,--version", "mpuevent " MPUEVENT_VERSION,
                         "Print the version and exit");
    app.get_formatter()->column_width(kHelpColumn);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Positionals", "Arguments");
    app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  }

  CLI::App* add(const std::string& name, const std::string& description) {
    CLI::App* command = app_.add_subcommand(name, description);
    addHelpFlags(*command);
    command->group("Commands");
    return command;
  }

  template <typename Options>
  void add(const std::string& name, const std::string& description, Options& options,
           void (*addTo)(CLI::App&, Options&), ExitCode (*run)(const Options&)) {
    CLI::App* command = add(name, description);
    command->callback(
        [this, &options, run] { command_ = [options, run] { return run(options); }; });
    optionsOf_.emplace_back(name, [=, &options] { addTo(*command, options); });
  }

  // The options of a command alone, or of all if it is none: those of all take milliseconds.
  void addOptions(std::string_view command) {
    const auto isWanted = [command](const auto& options) { return options.first == command; };
    const bool one = std::any_of(optionsOf_.begin(), optionsOf_.end(), isWanted);
    for (const auto& options : optionsOf_) {
      if (!one || isWanted(options)) options.second();
    }
  }

  std::string help(const CLI::App& command) const {
    const std::string name =
        &command == &app_ ? app_.get_name() : app_.get_name() + " " + command.get_name();
    std::string text = command.get_formatter()->make_help(&command, name, {}) + kExitCodes;
    for (std::size_t at = 0; (at = text.find("\n\n\n", at)) != std::string::npos;) {
      text.erase(at, 1);
    }
    return text;
  }

  std::vector<std::string> namesOfCommands() const {
    std::vector<std::string> names;
    for (const CLI::App* command : app_.get_subcommands([](const CLI::App*) { return true; })) {
      names.push_back(command->get_name());
    }
    return names;
  }

  void answerHelp() {
    if (helpTopic_.empty()) {
      answer_ = Answer{help(app_)};
      return;
    }
    const auto named = app_.get_subcommands(
        [this](const CLI::App* command) { return command->get_name() == helpTopic_; });
    if (named.empty()) throw CLI::ValidationError("no command '" + helpTopic_ + "'");
    answer_ = Answer{help(*named.front())};
  }

  // Most likely `decode` was forgotten, if the first argument may be a file or an option of it.
  std::string reasonOf(const CLI::ParseError& error, const std::string& first) const {
    if (!app_.get_subcommands().empty()) return error.what();
    const bool option = first.size() > 1 && first.front() == '-';
    const bool decodes =
        option ? app_.get_subcommand("decode")->get_option_no_throw(
                     first.substr(0, first.find('='))) != nullptr
               : first.find_first_of("./-") != std::string::npos || std::filesystem::exists(first);
    if (decodes) {
      return (option ? "no option '" : "no command '") + first +
             "'; did you mean 'mpuevent decode " + first + (option ? " ...'?" : "'?");
    }
    return option ? error.what() : "no command '" + first + "'";
  }

  std::vector<std::pair<std::string, std::function<void()>>> optionsOf_;  // by their command
  CLI::App app_{"Decodes the event logs of a storage controller.", "mpuevent"};
  DecodeOptions decode_;
  ExplainOptions explain_;
  StoreOptions store_;
  SummaryOptions summary_;
  SendOptions send_;
  WorkOptions work_;
  AuditOptions audit_;
  StreamOptions stream_;
  SchemaOptions schema_;
  std::string helpTopic_;
  Command command_;
  std::optional<Answer> answer_;
};

}  // namespace

std::variant<Command, Answer, UsageError> parseArguments(int argc, const char* const* argv) {
  return CommandLine().parse(argc, argv);
}

void showCommands(const std::function<void(CLI::App&)>& show) { CommandLine().show(show); }

}  // namespace mpuevent::tool
