#include "store/Engines.h"

namespace mpuevent::tool {

std::unique_ptr<Store> openPostgresqlStore(const std::string&, StoreAccess) {
  throw StoreError(
      "this build has no PostgreSQL; install libpq-dev and build with -DMPUEVENT_POSTGRESQL=ON");
}

}  // namespace mpuevent::tool
