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

enum class NumberBase : std::uint8_t {
  decimal,
  ofStream,  ///< that of standard output, with its prefix if it shows one
};

/// A piece of a trace message. It refers to its text and does not copy it.
class TracePart {
 public:
  TracePart(const char* text) : text_(text) {}
  TracePart(std::string_view text) : text_(text) {}
  TracePart(const Pegasus::String& string) : string_(&string) {}
  /// Printed unsigned: in decimal, or as standard output prints numbers at the time.
  TracePart(std::uint32_t number, NumberBase base = NumberBase::decimal)
      : number_(number), kind_(base == NumberBase::decimal ? Kind::decimal : Kind::streamNumber) {}

 private:
  friend void writeTrace(TraceSite site, std::initializer_list<TracePart> message);

  enum class Kind : std::uint8_t { text, decimal, streamNumber };

  std::string_view text_;
  const Pegasus::String* string_ = nullptr;
  std::uint32_t number_ = 0;
  Kind kind_ = Kind::text;
};

/// Whether trace lines are wanted. To be asked once for each line, as the answer may change.
bool traceWanted();

/// Writes one trace line to standard output. The caller has asked whether it is wanted.
void writeTrace(TraceSite site, std::initializer_list<TracePart> message);

/// Writes one trace line to standard output, if it is wanted.
inline void trace(TraceSite site, std::initializer_list<TracePart> message) {
  if (traceWanted()) writeTrace(site, message);
}

}  // namespace mpuevent

#endif
