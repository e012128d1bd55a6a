#include "support/GoldenRows.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace mpuevent::support {

void GoldenRows::add(const std::string& label, std::string_view told) {
  if (told != last_) text_ += label + ": " + std::string(told) + "\n";
  last_ = told;
}

void GoldenRows::check() const {
  const std::string path = MPUEVENT_ROWS "/" + name_ + ".txt";
  if (std::getenv("MPUEVENT_UPDATE_ROWS") != nullptr) {
    std::ofstream(path, std::ios::binary) << text_;
    return;
  }
  std::ifstream file(path, std::ios::binary);
  std::istringstream rows(text_);
  std::string expected;
  std::string row;
  for (int line = 1;; ++line) {
    const bool more = static_cast<bool>(std::getline(rows, row));
    const bool expectsMore = static_cast<bool>(std::getline(file, expected));
    if (!more && !expectsMore) return;
    if (more && expectsMore && row == expected) continue;
    FAIL() << path << ":" << line
           << ": first difference\n  expected: " << (expectsMore ? expected : "no further row")
           << "\n  decoded:  " << (more ? row : "no further row")
           << "\nIf that is meant: script/build release update-golden, and read what changed.";
  }
}

Payload letters(std::size_t size) {
  Payload bytes;
  for (unsigned byte = 0x81; bytes.str().size() < size; byte = (byte + 1) % 256) {
    if (byte >= 0xA0 || byte % 16 >= 10) bytes.u8(static_cast<std::uint8_t>(byte));
  }
  return bytes;
}

}  // namespace mpuevent::support
