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

void writeFile(const fs::path& file, std::string_view bytes) {
  std::ofstream out(file, std::ios::binary);
  out.exceptions(std::ios::badbit | std::ios::failbit);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
}

/// A sample as fuzz_decoder.cpp reads it; its `evStructLength` is `more` than the payload's length.
std::string decoderInput(const mpuevent::samples::Sample& sample, int more,
                         std::string_view payload) {
  return mpuevent::support::Payload()
      .u16(sample.id)
      .u8(sample.idVersion)
      .u8(sample.type)
      .u8(sample.category)
      .u16(static_cast<std::uint16_t>(more))
      .bytes(payload)
      .str();
}

/// What the fuzzer seldom gets to by itself: a long payload, one cut, one that lies of its length.
void writeVariants(const fs::path& stem, const mpuevent::samples::Sample& sample) {
  const std::string& payload = sample.payload;
  const auto write = [&](const char* kind, int more, std::string_view bytes) {
    writeFile(stem.string() + kind, decoderInput(sample, more, bytes));
  };
  const auto size = static_cast<int>(payload.size());
  std::string again;
  while (size > 0 && again.size() + payload.size() <= 65500) again += payload;
  write("-over-and-over", 0, again);
  write("-no-payload", 0, "");
  write("-cut-in-half", 0, std::string_view(payload).substr(0, payload.size() / 2));
  write("-claims-no-payload", -size, payload);
  write("-claims-too-much", 4096, payload);
  write("-every-byte-255", 0, std::string(300, '\xFF'));
}

/// For the envelope a message, for a decoder what fuzz_decoder.cpp reads.
void writeRecordSeeds(const fs::path& top) {
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    int index = 0;
    for (const mpuevent::samples::Sample& sample : module.samples()) {
      const std::string name =
          "source" + std::to_string(module.source) + "-" + std::to_string(index++);
      writeFile(top / "fuzz_envelope" / name,
                mpuevent::support::message(mpuevent::samples::record(module, sample).str()));
      const fs::path directory = top / ("fuzz_" + std::string(module.name));
      fs::create_directories(directory);
      writeFile(directory / name, decoderInput(sample, 0, sample.payload));
      if (index != 1) continue;
      writeVariants(directory / name, sample);
      const char number = static_cast<char>(&module - mpuevent::samples::modules().data());
      writeFile(top / "fuzz_large" / module.name,
                std::string{number, '\xFF'} + decoderInput(sample, 0, sample.payload));
    }
  }
}

void writeReaderSeeds(const fs::path& directory) {
  std::string messages;
  std::string records;
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    const std::string record = mpuevent::samples::record(module, module.samples().front()).str();
    records += record;
    messages += mpuevent::support::message(record);
  }
  // A damaged length, a header that is missing, a message that is cut off.
  std::string damaged = messages;
  damaged[10] = '\xFF';
  damaged = damaged.substr(0, 700) + damaged.substr(764) + messages.substr(0, 500) + messages;
  const std::string automatic("\0\1\100\3", 4);
  writeFile(directory / "messages", automatic + messages);
  writeFile(directory / "records", automatic + records);
  writeFile(directory / "damaged", automatic + damaged);
  writeFile(directory / "damaged-repeated", automatic + damaged.substr(0, 64 * 32 - 4));
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
    writeFile(directory / ("text" + std::to_string(index)), division + texts[index]);
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
    for (const char* target : {"fuzz_envelope", "fuzz_large", "fuzz_text", "fuzz_reader"}) {
      fs::create_directories(top / target);
    }
    writeRecordSeeds(top);
    const auto aText = static_cast<char>(mpuevent::samples::modules().size());
    writeFile(top / "fuzz_large" / "text-of-tags", std::string{aText, '\xFF'} + "\x02\x10\x11");
    writeFile(top / "fuzz_large" / "text-of-many-lengths", std::string{aText, '\xFF'} + "\x0B\x0E");
    writeFile(top / "fuzz_large" / "text-of-unclosed-lengths", std::string{aText, '\xFF'} + "\x01");
    writeTextSeeds(top / "fuzz_text");
    writeReaderSeeds(top / "fuzz_reader");
  } catch (const std::exception& failure) {
    std::cerr << "make_seeds: " << failure.what() << '\n';
    return 2;
  }
  return 0;
}
