// What takes the place of Unpacking.cpp in a build without libarchive.
#include "log/input/LogSource.h"

namespace mpuevent::log {

const bool unpacks = false;

void forEachLog(const LogSource& source, const LogVisitor& visitor) { visitor.visit(source); }

}  // namespace mpuevent::log
