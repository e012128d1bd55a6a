#include "choosing/ChoosingOptions.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>

#include "OfferedWords.h"
#include "choosing/Grep.h"
#include "choosing/Values.h"
#include "choosing/Words.h"

namespace mpuevent::tool {

namespace {

using log::HeaderNumber;
using log::HeaderText;

constexpr char kTime[] = "Time";
constexpr char kChoosing[] =
    "Choosing (all that is said must hold; --not-type and so on: the opposite)";
constexpr char kNumberOf[] = "Number of events";
constexpr char kHidden[] = "";

/// Adds an option and its opposite, which the help tells of in the group's name.
CLI::Option* addBoth(CLI::App& command, const std::string& names, const std::string& name,
                     const std::function<void(const std::vector<std::string>&, bool)>& require,
                     const std::string& description, const std::vector<std::string>& words = {}) {
  const auto add = [&](const std::string& flags, bool negated) {
    return command
        .add_option_function<std::vector<std::string>>(
            flags,
            [name, require, negated](const std::vector<std::string>& values) {
              try {
                require(values, negated);
              } catch (const std::invalid_argument& error) {
                throw CLI::ValidationError((negated ? "--not-" : "--") + name + ": " +
                                           error.what());
              }
            },
            description)
        ->expected(1)
        ->check(offering(words))
        ->allow_extra_args(false)  // a file may come next
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  };
  add("--not-" + name, true)->group(kHidden);
  return add(names + "--" + name, false)->group(kChoosing);
}

void addTimes(CLI::App& command, ChoosingOptions& options) {
  command
      .add_option_function<std::string>(
          "--epoch",
          [&options](const std::string& text) {
            options.epoch = parseEpoch(text);
            if (!options.epoch) {
              throw CLI::ValidationError("--epoch: '" + text +
                                         "' is neither unix nor YYYY-MM-DD[THH:MM:SS[Z]]");
            }
          },
          "What timestamp 0 stands for: unix or a date;\n"
          "events are then shown with their dates")
      ->type_name("DATE")
      ->envname("MPUEVENT_EPOCH")
      ->group(kTime);
  const auto add = [&](const std::string& name, const auto& rangeOf, const std::string& what) {
    command
        .add_option_function<std::string>(
            name,
            [&options, name, rangeOf](const std::string& text) {
              try {
                options.choice.require(HeaderNumber::timestamp,
                                       rangeOf(parseTime(text, options.epoch)));
              } catch (const std::invalid_argument& error) {
                throw CLI::ValidationError(name + ": " + error.what());
              }
            },
            what)
        ->type_name("T")
        ->group(kTime);
  };
  add(
      "--since", [](const DateSpan& time) { return timesFrom(time.first); },
      "Events at T or later, wherever they are in the\n"
      "log; T is a timestamp or, with --epoch, a date\n"
      "YYYY-MM-DD or YYYY-MM-DDTHH:MM:SS, in UTC");
  add(
      "--until", [](const DateSpan& time) { return timesUpTo(time.last); },
      "Events at T or earlier, to the end of a day");
}

void addNumbers(CLI::App& command, log::Choice& choice, const std::string& name,
                HeaderNumber number, const std::string& typeName, const std::string& description) {
  addBoth(
      command, {}, name,
      [&choice, number](const std::vector<std::string>& values, bool negated) {
        choice.require(number, parseRanges(values), negated);
      },
      description)
      ->type_name(typeName);
}

void addCodes(CLI::App& command, log::Choice& choice, const std::string& shortName,
              const std::string& name, HeaderNumber number, Words (*words)(),
              const std::string& description) {
  addBoth(
      command, shortName, name,
      [&choice, number, words](const std::vector<std::string>& values, bool negated) {
        choice.require(number, parseCodes(values, words()), negated);
      },
      description, words().listed())
      ->type_name("WORD");
}

void addSerial(CLI::App& command, log::Choice& choice, const std::string& name, HeaderText text,
               const std::string& description) {
  addBoth(
      command, {}, name,
      [&choice, text](const std::vector<std::string>& values, bool negated) {
        choice.require(text, serialBytes(values), negated);
      },
      description)
      ->type_name("SERIAL");
}

void addGrep(CLI::App& command, ChoosingOptions& options) {
  CLI::Option* const grep = addBoth(
      command, {}, "grep",
      [&options](const std::vector<std::string>& patterns, bool negated) {
        const Grep check(patterns, false);
        (negated ? options.notPatterns : options.patterns) = patterns;
      },
      Grep::isBuiltIn ? "A regular expression (RE2) is in event id,\n"
                        "Summary or Body"
                      : "Not in this build");
  grep->type_name("REGEX");
  command.add_flag("-i", options.ignoreCase, "--grep takes a for A")->group(kChoosing);
}

}  // namespace

void addChoosingOptions(CLI::App& command, ChoosingOptions& options) {
  log::Choice& choice = options.choice;
  // Before those that take dates, as options are read in this order.
  addTimes(command, options);
  addCodes(command, choice, "-t,", "type", HeaderNumber::type, Words::ofTypes,
           "error, warning, informational, other or the\n"
           "number in the record; several with commas");
  addCodes(command, choice, {}, "source", HeaderNumber::source, Words::ofSources,
           "The source or its module as printed, in any\n"
           "case, or numbers: 'I/O Mgr', iomgr, 0x05,20-24");
  addCodes(command, choice, {}, "category", HeaderNumber::category, Words::ofCategories,
           "The category as printed, or numbers");
  addNumbers(command, choice, "code", HeaderNumber::code, "N[-M]", "Event codes: 17,0x200-0x2ff");
  addNumbers(command, choice, "slot", HeaderNumber::slot, "N[-M]", "Controller slots");
  addSerial(command, choice, "controller", HeaderText::controllerSerial,
            "Serial number of the controller; for several\nrepeat the option");
  addSerial(command, choice, "enclosure", HeaderText::enclosureSerial,
            "Serial number of the enclosure");
  addNumbers(command, choice, "log", HeaderNumber::logInstance, "N[-M]", "Event log instances");
  addNumbers(command, choice, "sequence", HeaderNumber::sequenceId, "A..B", "Sequence ids");
  addGrep(command, options);
  CLI::Option* const head =
      command.add_option("--head", options.first, "The first N; reading stops there");
  head->type_name("N")->group(kNumberOf);
  command.add_option("-n", options.last, "The last N; memory grows with N")
      ->type_name("N")
      ->excludes(head)
      ->group(kNumberOf);
  command
      .add_flag("--merge", options.merge,
                "All files in one order, by time, and the same\n"
                "record once; memory grows with what is chosen")
      ->group(kNumberOf);
}

}  // namespace mpuevent::tool
