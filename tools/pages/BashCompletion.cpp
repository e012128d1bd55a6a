#include <map>
#include <string_view>

#include "Pages.h"
#include "ShellText.h"

namespace mpuevent::pages {

namespace {

constexpr char kHead[] = R"sh(# Completion of mpuevent for bash.

)sh";

// The value of an option is completed from its words behind the last comma; those with blanks in
// them are quoted as the user has begun to.
constexpr char kTail[] = R"sh(
_mpuevent_complete_words() {
  local word=$1 quote= begun candidate
  shift
  case $word in [\"\']*) quote=${word:0:1} word=${word:1} ;; esac
  begun=${word##*,}
  local -r before=${word%"$begun"}
  begun=${begun//\\/}
  for candidate; do
    if [[ ${candidate,,} == "${begun,,}"* ]]; then
      [[ -n $quote ]] || printf -v candidate %q "$candidate"
      COMPREPLY+=("$before$candidate")
    fi
  done
}

_mpuevent_complete_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$1")
}

_mpuevent() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} option= command= at
  local -a words=()
  COMPREPLY=()
  # --type=error comes as three words.
  if [[ $word == = ]]; then
    option=$before word=
  elif [[ $before == = ]]; then
    option=${COMP_WORDS[COMP_CWORD - 2]}
  elif [[ $before == -?* ]]; then
    option=$before
  fi
  for ((at = 1; at < COMP_CWORD; ++at)); do
    if [[ ${COMP_WORDS[at]} != -* ]]; then
      command=${COMP_WORDS[at]}
      break
    fi
  done
  if [[ -n $option ]] && mapfile -t words < <(_mpuevent_value "$command" "$option") && [[ ${#words[@]} -gt 0 ]]; then
    case ${words[0]} in
      words) _mpuevent_complete_words "$word" "${words[@]:1}" ;;
      files) _mpuevent_complete_files "$word" ;;
    esac
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$(_mpuevent_options "$command")" -- "$word")
  elif mapfile -t words < <(_mpuevent_value "$command" '') && [[ ${words[0]-} == words ]]; then
    _mpuevent_complete_words "$word" "${words[@]:1}"
  else
    _mpuevent_complete_files "$word"
  fi
}

complete -F _mpuevent mpuevent
)sh";

std::string optionsOf(const CommandFacts& command) {
  std::string text = "    " + quoted(command.name) + ") echo '";
  std::string_view between;
  for (const OptionGroup& group : command.groups) {
    for (const OptionFacts& option : group.options) {
      for (const std::string& name : spellings(option)) {
        (text += between) += name;
        between = " ";
      }
    }
  }
  return text + "' ;;\n";
}

/// The answers of _mpuevent_value, each with the patterns of its questions.
using Values = std::map<std::string, std::string>;

void add(Values& values, const CommandFacts& command, const OptionFacts& option,
         const std::string& name) {
  std::string answer = option.takesFile ? "files" : "text";
  if (!option.words.empty()) {
    answer = "words";
    for (const std::string& word : option.words) answer += ' ' + quoted(word);
  }
  std::string& patterns = values[answer];
  if (!patterns.empty()) patterns += " | ";
  patterns += quoted(command.name + ' ' + name);
}

Values valuesOf(const std::vector<CommandFacts>& commands) {
  Values values;
  for (const CommandFacts& command : commands) {
    for (const OptionFacts& argument : command.arguments) {
      if (!argument.words.empty()) add(values, command, argument, "");
    }
    for (const OptionGroup& group : command.groups) {
      for (const OptionFacts& option : group.options) {
        if (option.type.empty()) continue;
        for (const std::string& name : spellings(option)) add(values, command, option, name);
      }
    }
  }
  return values;
}

OptionFacts namesOfCommands(const std::vector<CommandFacts>& commands) {
  OptionFacts argument;
  for (const CommandFacts& command : commands) {
    if (!command.name.empty()) argument.words.push_back(command.name);
  }
  return argument;
}

}  // namespace

std::string bashCompletion(const std::vector<CommandFacts>& commands) {
  std::string text = kHead;
  text += "_mpuevent_options() {\n  case $1 in\n";
  for (const CommandFacts& command : commands) text += optionsOf(command);
  text +=
      "  esac\n}\n\n"
      "# What the value of an option is: words, which follow, files, or a text; nothing for a "
      "flag.\n"
      "_mpuevent_value() {\n  case \"$1 $2\" in\n";
  Values values = valuesOf(commands);
  add(values, {}, namesOfCommands(commands), "");
  for (const auto& [answer, patterns] : values) {
    text.append("    ").append(patterns).append(")\n      printf '%s\\n' ").append(answer);
    text += "\n      ;;\n";
  }
  return text + "  esac\n}\n" + kTail;
}

}  // namespace mpuevent::pages
