#ifndef MPUEVENT_SUPPORT_TRACECAPTURE_H
#define MPUEVENT_SUPPORT_TRACECAPTURE_H

#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

namespace mpuevent::support {

/// As long as it lives, tracing is on and what is written to `std::cout` is kept here; then both
/// are as they were. For one thread, as `std::cout` has one buffer.
class TraceCapture {
 public:
  TraceCapture();
  ~TraceCapture();
  TraceCapture(const TraceCapture&) = delete;
  TraceCapture& operator=(const TraceCapture&) = delete;

  /// The lines so far, each without its line end and without the time stamp and process id that
  /// begin it: "Quarn_Event:173                :----: Quarn_Event::sourceFromEmpValue() ...".
  /// A line that has no such beginning is given whole.
  std::vector<std::string> lines() const;

 private:
  std::ostringstream written_;
  std::streambuf* terminal_;
  bool suppressed_;
};

}  // namespace mpuevent::support

#endif
