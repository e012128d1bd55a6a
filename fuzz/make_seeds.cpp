// Writes the inputs that fuzzing starts from, one directory for each target.
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "records/SampleRecords.h"
#include "support/RecordBuilder.h"

namespace {

namespace fs = std::filesystem;

void write(const fs::path& file, std::string_view bytes) {
  std::ofstream out(file, std::ios::binary);
  out.exceptions(std::ios::badbit | std::ios::failbit);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
}

void writeEnvelopeSeeds(const fs::path& directory) {
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    int index = 0;
    for (const mpuevent::samples::Sample& sample : module.samples()) {
      const std::string name =
          "source" + std::to_string(module.source) + "-" + std::to_string(index++);
      write(directory / name,
            mpuevent::support::message(mpuevent::samples::record(module, sample).str()));
    }
  }
}

void writeTextSeeds(const fs::path& directory) {
  std::vector<std::string> texts = {
      "a=b, 50% of <x & y>",
      "<Key>1&2</Key><K>v</>",
      "<a><b>1=2</b><c>3<d>&</d></c></a>",
      "<a><b>unclosed</a></b>",
      "<>not a tag</>, <x y>and one</x y>",
      "key\\value\\\\",
      std::string(3000, '&'),
  };
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    for (const mpuevent::samples::Sample& sample : module.samples()) {
      texts.push_back(sample.payload);
    }
  }
  for (std::size_t index = 0; index < texts.size(); ++index) {
    const auto division = static_cast<char>(index * 40);
    write(directory / ("text" + std::to_string(index)), division + texts[index]);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_seeds DIRECTORY\n";
    return 2;
  }
  try {
    const fs::path top = argv[1];
    fs::create_directories(top / "fuzz_envelope");
    writeEnvelopeSeeds(top / "fuzz_envelope");
    fs::create_directories(top / "fuzz_text");
    writeTextSeeds(top / "fuzz_text");
  } catch (const std::exception& failure) {
    std::cerr << "make_seeds: " << failure.what() << '\n';
    return 2;
  }
  return 0;
}
