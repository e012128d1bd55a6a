#include "store/Engines.h"

namespace mpuevent::tool {

std::unique_ptr<Store> openSqliteStore(const std::string& path, StoreAccess) {
  throw StoreError(path + ": this build has no SQLite; build it where libsqlite3-dev is installed");
}

}  // namespace mpuevent::tool
