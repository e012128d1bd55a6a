#ifndef EVENT_TRACE_H
#define EVENT_TRACE_H

#include <Pegasus/Common/String.h>

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace mpuevent {

/// Where a trace line says that it comes from: fixed texts and numbers of the line itself, not
/// the place in today's sources.
struct TraceSite {
  const char* file;
  int line;
};

/// A piece of a trace message. It refers to its text and does not copy it.
class TracePart {
 public:
  TracePart(const char* text) : text_(text) {}
  TracePart(std::string_view text) : text_(text) {}
  TracePart(const Pegasus::String& string) : string_(&string) {}
  /// Printed unsigned, in the base that standard output has at the time.
  TracePart(std::uint32_t number) : number_(number), isNumber_(true) {}

 private:
  friend void trace(TraceSite site, std::initializer_list<TracePart> message);

  std::string_view text_;
  const Pegasus::String* string_ = nullptr;
  std::uint32_t number_ = 0;
  bool isNumber_ = false;
};

/// Whether trace lines are wanted; asked anew for each line.
bool traceWanted();

/// Writes one trace line to standard output, if trace lines are wanted.
void trace(TraceSite site, std::initializer_list<TracePart> message);

}  // namespace mpuevent

#endif
