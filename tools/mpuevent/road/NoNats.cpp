#include "road/Road.h"

namespace mpuevent::tool {

std::unique_ptr<Road> openRoad(const RoadAddress&, const TellRoad&, const std::function<bool()>&) {
  throw RoadError(
      "this build has no NATS: install libnats-dev (Debian: apt-get install libnats-dev) and build "
      "anew with -DMPUEVENT_NATS=ON");
}

}  // namespace mpuevent::tool
