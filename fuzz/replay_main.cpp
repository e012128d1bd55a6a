// Runs a fuzz target, in place of libFuzzer, on files and on the files of directories.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "FuzzTarget.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& path) {
  if (!fs::is_directory(path)) {
    return {path};
  }
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool replay(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
  if (!in.is_open()) {
    std::cerr << "replay: " << file.string() << ": cannot be read\n";
    return false;
  }
  // Named before it runs: a target that fails does not come back.
  std::cerr << file.string() << '\n';
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  mpuevent::fuzz::isReplay = true;
  std::size_t replayed = 0;
  for (int i = 1; i < argc; ++i) {
    for (const fs::path& file : filesOf(argv[i])) {
      if (!replay(file)) return 2;
      ++replayed;
    }
  }
  std::cerr << replayed << " inputs replayed\n";
  return replayed == 0 ? 2 : 0;
}
