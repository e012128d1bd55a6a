#ifndef MPUEVENT_LOG_INPUT_LAZYLIBRARY_H
#define MPUEVENT_LOG_INPUT_LAZYLIBRARY_H

#include <atomic>
#include <stdexcept>
#include <string>

namespace mpuevent::log {

/// A library cannot be loaded, or is not what it should be; the loader's words.
struct LibraryError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A shared library that is loaded when it is first needed. That of a server brings tens of others:
/// megabytes and milliseconds that most runs have no use for. It stays until the program ends.
class LazyLibrary {
 public:
  /// `file` is its soname, and must last.
  explicit constexpr LazyLibrary(const char* file) : file_(file) {}

  /// Loads it, unless it is there already; says why it cannot be.
  std::string load();

  /// Throws LibraryError if it has no such function, or cannot be loaded.
  void* find(const char* function);

 private:
  const char* file_;
  std::atomic<void*> handle_ = nullptr;
};

template <class Signature>
class LazyFunction;

/// A function of such a library, called by its own name: what declares one hides the function
/// itself from the code around it. From any thread.
template <class Result, class... Arguments>
class LazyFunction<Result(Arguments...)> {
 public:
  /// Both must last.
  constexpr LazyFunction(LazyLibrary& library, const char* name) : library_(library), name_(name) {}

  Result operator()(Arguments... arguments) const {
    Function* function = found_.load(std::memory_order_acquire);
    if (function == nullptr) {
      // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): what POSIX has for it.
      function = reinterpret_cast<Function*>(library_.find(name_));
      found_.store(function, std::memory_order_release);
    }
    return function(arguments...);
  }

 private:
  using Function = Result(Arguments...);

  LazyLibrary& library_;
  const char* name_;
  mutable std::atomic<Function*> found_ = nullptr;
};

}  // namespace mpuevent::log

#endif
