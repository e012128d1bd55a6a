#include "road/RoadOptions.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <fstream>
#include <functional>
#include <map>
#include <mutex>

#include "Output.h"

namespace mpuevent::tool {

namespace {

// The same is not told again for so long, and so many messages are remembered.
constexpr std::chrono::seconds kQuiet{10};
constexpr std::size_t kMostTold = 64;

}  // namespace

void addRoadOptions(CLI::App& command, const std::string& name, RoadOptions& options) {
  const auto add = [&command](const std::string& option, std::string& value,
                              const std::string& type, const std::string& description) {
    return command.add_option(option, value, description)->type_name(type)->group("Servers");
  };
  add(name, options.address.servers, "URL,...",
      "The servers: nats://HOST:PORT, with commas between\nthem; tls:// for TLS")
      ->required();
  CLI::Option* const user =
      add("--user", options.address.user, "NAME", "Who this is to the servers");
  add("--password-file", options.passwordFile, "FILE", "Its first line is the password")
      ->needs(user)
      ->check(CLI::ExistingFile.description(""));
  add("--tls-ca", options.address.authorities, "FILE",
      "Certificates (PEM) that the servers' are signed\nwith; makes it TLS")
      ->check(CLI::ExistingFile.description(""));
  CLI::Option* const certificate = add("--tls-cert", options.address.certificate, "FILE",
                                       "Certificate (PEM) to show to the servers;\nmakes it TLS")
                                       ->check(CLI::ExistingFile.description(""));
  CLI::Option* const key = add("--tls-key", options.address.key, "FILE", "Its key (PEM)")
                               ->check(CLI::ExistingFile.description(""));
  certificate->needs(key);
  key->needs(certificate);
}

void addWorkersOption(CLI::App& command, RoadOptions& options) {
  command
      .add_option("--workers", options.workers,
                  "Name of the workers that share the messages\n(default mpuevent); another name "
                  "gets all that\nstill lie there")
      ->type_name("NAME")
      ->group("Servers")
      ->check(CLI::Validator(
          [](const std::string& name) {
            return name.empty() || name.find_first_of(" \t\r\n.*>/\\") != std::string::npos
                       ? std::string("a name without blanks and . * > / \\ is needed")
                       : std::string();
          },
          ""));
}

RoadAddress addressOf(const RoadOptions& options) {
  RoadAddress address = options.address;
  if (options.passwordFile.empty()) return address;
  std::ifstream file(options.passwordFile);
  if (!std::getline(file, address.password)) {
    throw RoadError(options.passwordFile + ": no password can be read");
  }
  return address;
}

void tellOfRoad(std::string_view message) {
  using Clock = std::chrono::steady_clock;
  static std::mutex mutex;
  static std::map<std::string, Clock::time_point, std::less<>> told;
  {
    const std::lock_guard lock(mutex);
    const auto known = told.find(message);
    if (known != told.end() && Clock::now() - known->second < kQuiet) return;
    if (told.size() == kMostTold) told.clear();
    told.insert_or_assign(std::string(message), Clock::now());
  }
  complain(message);
}

}  // namespace mpuevent::tool
