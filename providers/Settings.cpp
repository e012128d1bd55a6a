#include "Settings.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace mpuevent::provider {

namespace {

constexpr const char* kVariable = "MPUEVENT_PROVIDER_CONF";
constexpr const char* kFile = "/etc/mpuevent/provider.conf";

std::string trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

// False if the key or its value is none.
bool set(Settings& settings, std::string_view key, const std::string& value) {
  if (key == "start") {
    settings.fromBeginning = value == "begin";
    return settings.fromBeginning || value == "end";
  }
  if (key == "epoch") {
    settings.epoch = tool::parseEpoch(value);
    return settings.epoch.has_value();
  }
  const std::map<std::string_view, std::string*> paths = {
      {"log",    &settings.log   },
      {"events", &settings.events},
      {"state",  &settings.state },
  };
  const auto path = paths.find(key);
  const bool isPath = value.starts_with('/') || (key == "events" && value.starts_with("unix:/"));
  if (path == paths.end() || !isPath) return false;
  *path->second = value;
  return true;
}

}  // namespace

Settings readSettings() {
  const char* named = std::getenv(kVariable);
  const std::string name = named != nullptr ? named : kFile;
  Settings settings;
  settings.events.clear();
  std::ifstream file(name);
  if (!file && named != nullptr) throw std::runtime_error(name + ": cannot be read");
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    const std::string content = trimmed(line);
    if (content.empty() || content.front() == '#') continue;
    const std::size_t equals = content.find('=');
    const bool understood =
        equals != std::string::npos &&
        set(settings, trimmed(content.substr(0, equals)), trimmed(content.substr(equals + 1)));
    if (!understood) {
      std::string what = name + ":" + std::to_string(number);
      throw std::runtime_error(what.append(": not understood: ").append(content));
    }
  }
  if (settings.events.empty()) settings.events = settings.log;
  return settings;
}

}  // namespace mpuevent::provider
