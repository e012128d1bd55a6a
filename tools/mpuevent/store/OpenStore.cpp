#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "store/Engines.h"

namespace mpuevent::tool {

namespace {

using namespace std::string_view_literals;

constexpr std::array<std::string_view, 2> kServers = {"postgresql://", "postgres://"};
constexpr std::array<std::string_view, 3> kBesideStore = {"-wal", "-shm", "-journal"};
constexpr std::string_view kSqliteMagic = "SQLite format 3\0"sv;

bool isServer(std::string_view name) {
  return name.starts_with(kServers[0]) || name.starts_with(kServers[1]);
}

}  // namespace

bool isStore(const std::string& name) {
  if (isServer(name)) return true;
  // What a FIFO gives out it gives once.
  std::error_code unknown;
  if (!std::filesystem::is_regular_file(name, unknown)) return false;
  std::array<char, kSqliteMagic.size()> beginning{};
  std::ifstream file(name, std::ios::binary);
  return file.read(beginning.data(), beginning.size()) &&
         std::string_view(beginning.data(), beginning.size()) == kSqliteMagic;
}

bool isPartOfStore(const std::string& name) {
  return std::any_of(kBesideStore.begin(), kBesideStore.end(), [&name](std::string_view ending) {
    return name.ends_with(ending) && isStore(name.substr(0, name.size() - ending.size()));
  });
}

std::size_t storesAtOnce(const std::string& target) { return isServer(target) ? 2 : 1; }

std::unique_ptr<Store> openStore(const std::string& target, StoreAccess access) {
  if (isServer(target)) return openPostgresqlStore(target, access);
  return openSqliteStore(target, access);
}

}  // namespace mpuevent::tool
