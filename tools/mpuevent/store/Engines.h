#ifndef MPUEVENT_TOOL_STORE_ENGINES_H
#define MPUEVENT_TOOL_STORE_ENGINES_H

#include <memory>
#include <string>

#include "store/Store.h"

namespace mpuevent::tool {

// Each in a file of its own, and in another one for builds without the engine, where it throws.
std::unique_ptr<Store> openSqliteStore(const std::string& path, StoreAccess access);
std::unique_ptr<Store> openPostgresqlStore(const std::string& target, StoreAccess access);

}  // namespace mpuevent::tool

#endif
