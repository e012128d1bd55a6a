#ifndef MPUEVENT_TOOL_TRACELINES_H
#define MPUEVENT_TOOL_TRACELINES_H

#include <sstream>
#include <streambuf>

namespace mpuevent::tool {

/// As long as it lives, the library writes its trace lines, and they are kept here until passed on
/// to standard error.
class TraceLines {
 public:
  TraceLines();
  ~TraceLines();
  TraceLines(const TraceLines&) = delete;
  TraceLines& operator=(const TraceLines&) = delete;

  bool any() const { return !lines_.view().empty(); }
  /// Forgets the lines that came since the last call of this or passOn().
  void drop() { lines_.str({}); }
  /// Writes the lines that came since the last call.
  void passOn();

 private:
  std::ostringstream lines_;
  std::streambuf* standardOutput_;
};

}  // namespace mpuevent::tool

#endif
