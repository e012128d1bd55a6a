#include "choosing/Grep.h"

#include <re2/re2.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "forms/Utf8.h"

namespace mpuevent::tool {

const bool Grep::isBuiltIn = true;

class Grep::Patterns {
 public:
  void add(const std::string& pattern, const RE2::Options& options) {
    patterns_.push_back(std::make_unique<RE2>(pattern, options));
    if (!patterns_.back()->ok()) {
      throw std::invalid_argument("'" + pattern + "': " + patterns_.back()->error());
    }
  }

  bool areIn(const Pegasus::String& text) {
    const std::string_view utf8 = utf8_.assign(text);
    const re2::StringPiece piece(utf8.data(), utf8.size());
    return std::any_of(patterns_.begin(), patterns_.end(), [&piece](const auto& pattern) {
      return RE2::PartialMatch(piece, *pattern);
    });
  }

 private:
  std::vector<std::unique_ptr<RE2>> patterns_;
  Utf8Text utf8_;
};

Grep::Grep(const std::vector<std::string>& patterns, bool ignoreCase)
    : patterns_(std::make_unique<Patterns>()) {
  RE2::Options options;
  options.set_log_errors(false);
  options.set_case_sensitive(!ignoreCase);
  for (const std::string& pattern : patterns) patterns_->add(pattern, options);
}

Grep::~Grep() = default;

bool Grep::matches(const Pegasus::Quarn_Event& event) {
  return patterns_->areIn(event.getEventID()) || patterns_->areIn(event.getSummary()) ||
         patterns_->areIn(event.getBody());
}

}  // namespace mpuevent::tool
