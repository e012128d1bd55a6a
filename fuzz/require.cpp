#include <cstdlib>
#include <iostream>

#include "FuzzTarget.h"

namespace mpuevent::fuzz {

void require(bool holds, const char* property) {
  if (!holds) {
    std::cerr << "does not hold: " << property << std::endl;
    std::abort();
  }
}

}  // namespace mpuevent::fuzz
