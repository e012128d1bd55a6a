#ifndef MPUEVENT_TOOL_OFFEREDWORDS_H
#define MPUEVENT_TOOL_OFFEREDWORDS_H

#include <CLI/CLI.hpp>
#include <string>

namespace mpuevent::tool {

// The words that a shell completes for an option are kept with it, as the name of its first check,
// which nothing else asks for. They follow the mark, a line each.
constexpr char kOfferedWords[] = "words";

/// `check`, which knows the words that it takes.
template <typename Words>
CLI::Validator offering(const CLI::Validator& check, const Words& words) {
  std::string name = kOfferedWords;
  for (const auto& word : words) (name += '\n') += word;
  return check.description("").name(name);
}

/// A check that lets everything through, for what is checked elsewhere.
template <typename Words>
CLI::Validator offering(const Words& words) {
  return offering(CLI::Validator([](std::string&) { return std::string(); }, ""), words);
}

}  // namespace mpuevent::tool

#endif
