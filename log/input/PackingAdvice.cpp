#include "log/input/PackingAdvice.h"

namespace mpuevent::log {

namespace {

struct Unpacker {
  std::string_view packing;
  std::string_view command;
};

Unpacker unpackerOf(Packing packing) {
  switch (packing) {
    case Packing::gzip:
      return {"gzip", "gzip -dc"};
    case Packing::xz:
      return {"xz", "xz -dc"};
    case Packing::zstd:
      return {"zstd", "zstd -dc"};
    case Packing::bzip2:
      return {"bzip2", "bzip2 -dc"};
    default:
      return {"zip", "unzip -p"};
  }
}

}  // namespace

std::string packingAdvice(Packing packing, std::string_view file) {
  const Unpacker unpacker = unpackerOf(packing);
  std::string text = "packed with ";
  text.append(unpacker.packing).append("; try: ").append(unpacker.command);
  if (!file.empty()) text.append(" '").append(file).append("'");
  return text.append(" | mpuevent decode");
}

}  // namespace mpuevent::log
