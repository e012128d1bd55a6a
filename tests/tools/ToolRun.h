// Running the tool on generated logs.
#ifndef TESTS_TOOLS_TOOLRUN_H
#define TESTS_TOOLS_TOOLRUN_H

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "CommandLine.h"

namespace mpuevent::tool::tests {

using Words = std::vector<std::string>;

/// What the tool writes to standard output, run as by itself: it closes that in the end.
inline std::string outputOf(const Words& arguments) {
  const std::string path = testing::TempDir() + "tool.out." + std::to_string(::getpid());
  const pid_t child = ::fork();
  if (child == 0) {
    std::vector<const char*> argv = {"mpuevent"};
    for (const std::string& argument : arguments) argv.push_back(argument.c_str());
    const auto request = parseArguments(static_cast<int>(argv.size()), argv.data());
    const auto* command = std::get_if<Command>(&request);
    if (command == nullptr || std::freopen(path.c_str(), "wb", stdout) == nullptr) ::_exit(99);
    ::_exit((*command)());
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  std::ifstream file(path, std::ios::binary);
  std::string output{std::istreambuf_iterator<char>(file), {}};
  const int expected = output.empty() || output == "0\n" ? 1 : 0;
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == expected) << status;
  std::remove(path.c_str());
  return output;
}

inline Words linesOf(const std::string& text) {
  Words lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

class Dice {
 public:
  std::uint32_t below(std::size_t bound) { return static_cast<std::uint32_t>(random_() % bound); }
  template <typename Values>
  const auto& oneOf(const Values& values) {
    return values[below(std::size(values))];
  }

 private:
  std::mt19937 random_{20061114};
};

inline std::string write(const std::string& name, const std::vector<std::string>& units) {
  const std::string path = testing::TempDir() + name + std::to_string(::getpid());
  std::ofstream file(path, std::ios::binary);
  for (const std::string& unit : units) file << unit;
  return path;
}

}  // namespace mpuevent::tool::tests

#endif
