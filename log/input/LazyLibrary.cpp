#include "log/input/LazyLibrary.h"

#include <dlfcn.h>

namespace mpuevent::log {

std::string LazyLibrary::load() {
  if (handle_ != nullptr) return {};
  // Two threads at once get the same.
  void* const handle = ::dlopen(file_, RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) return ::dlerror();
  handle_ = handle;
  return {};
}

void* LazyLibrary::find(const char* function) {
  if (const std::string reason = load(); !reason.empty()) throw LibraryError(reason);
  void* const found = ::dlsym(handle_, function);
  if (found == nullptr) throw LibraryError(::dlerror());
  return found;
}

}  // namespace mpuevent::log
