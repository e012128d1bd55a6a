#ifndef ProviderTraceServices_h
#define ProviderTraceServices_h

#include <string>

namespace Pegasus {

/// The parts of a provider's diagnostic trace line. Every function may be called on any thread.
class __attribute__((visibility("default"))) ProviderTraceServices {
 public:
  ProviderTraceServices() = delete;

  /// Whether this process is to write no trace lines; true until setTraceSuppressed(false).
  static bool ptsGetTraceSuppressForPid();
  static void setTraceSuppressed(bool suppressed);

  /// Local time now, `YYYY-MM-DD hh:mm:ss.mmm`.
  static std::string ptsGetTimeStampString();
  /// The process id in decimal.
  static std::string ptsGetPidString();
  /// `FILE:LINE`, padded with blanks on the right to `width` characters and never cut. `file` must
  /// not be null.
  static std::string ptsGetFileLineString(const char* file, int line, int width);
  /// Empty: lines are not indented.
  static std::string ptsGetIndentString();
};

}  // namespace Pegasus

#endif
