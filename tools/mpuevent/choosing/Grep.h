#ifndef MPUEVENT_TOOL_GREP_H
#define MPUEVENT_TOOL_GREP_H

#include <MPUEvent/Quarn_Event.h>

#include <memory>
#include <string>
#include <vector>

namespace mpuevent::tool {

/// Regular expressions that an event's texts may match, in time linear in the texts' length.
class Grep {
 public:
  /// Whether this build can; if not, making one throws.
  static const bool isBuiltIn;

  /// Throws `std::invalid_argument` for what is no regular expression.
  Grep(const std::vector<std::string>& patterns, bool ignoreCase);
  ~Grep();
  Grep(const Grep&) = delete;
  Grep& operator=(const Grep&) = delete;

  /// Whether one of the patterns is in the event id, the Summary or the Body.
  bool matches(const Pegasus::Quarn_Event& event);

 private:
  class Patterns;
  std::unique_ptr<Patterns> patterns_;
};

}  // namespace mpuevent::tool

#endif
