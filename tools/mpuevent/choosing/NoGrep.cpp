#include <stdexcept>

#include "choosing/Grep.h"

// In place of Grep.cpp where RE2 is missing.
namespace mpuevent::tool {

const bool Grep::isBuiltIn = false;

class Grep::Patterns {};

Grep::Grep(const std::vector<std::string>&, bool) {
  throw std::invalid_argument("this build has no regular expressions");
}

Grep::~Grep() = default;

bool Grep::matches(const Pegasus::Quarn_Event&) { return false; }

}  // namespace mpuevent::tool
