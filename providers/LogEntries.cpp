#include "LogEntries.h"

#include <syslog.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>

#include "log/framing/LogReader.h"
#include "log/input/InputFile.h"
#include "log/input/InputNames.h"
#include "log/input/LogSource.h"

namespace mpuevent::provider {

namespace {

/// One run over the files of a log.
class Run {
 public:
  Run(const std::string& path, const VisitEntry& visit) : path_(path), visit_(visit) {}

  log::Accounting read() {
    std::error_code error;
    const auto type = std::filesystem::status(path_, error).type();
    isDirectory_ = type == std::filesystem::file_type::directory;
    if (!isDirectory_ && type != std::filesystem::file_type::regular) {
      fail(path_, error ? error.message() : "neither a file nor a directory");
    }
    const auto complain = [this](const std::string& name, const std::string& reason) {
      fail(name, reason);
    };
    log::InputSelection selection;
    selection.names = {path_};
    log::InputNames names(selection, complain);
    while (const std::optional<std::string> name = wanted_ ? names.next() : std::nullopt) {
      readFile(*name);
    }
    return sum_;
  }

 private:
  void fail(const std::string& name, const std::string& reason) const {
    if (!isDirectory_) throw std::runtime_error(name + ": " + reason);
    ::syslog(LOG_WARNING, "mpuevent: %s: %s", name.c_str(), reason.c_str());
  }

  void readFile(const std::string& name) {
    const log::InputFile file(name);
    const log::LogSource source{
        name,
        [&](unsigned char* to, std::size_t room) { return file.read(to, room); },
        {},
        [&](std::uint64_t offset, unsigned char* to, std::size_t room) {
          return file.readAt(offset, to, room);
        }};
    const auto broken = [this](const std::string& part, const std::string& reason) {
      fail(part, reason);
    };
    forEachLog(source, {[this](const log::LogSource& log) { readLog(log); }, broken});
  }

  void readLog(const log::LogSource& source) {
    log::LogReader reader(
        source.read, log::LogForm::automatic, [](const log::Finding&) {}, {}, source.readAt);
    log::LogUnit unit;
    for (std::uint64_t index = 0; wanted_ && reader.next(unit); ++index) {
      wanted_ = visit_(unit, {path_, source.name, index});
    }
    const log::Accounting& counted = reader.accounting();
    sum_.events += counted.events;
    sum_.eventBytes += counted.eventBytes;
    sum_.skippedBytes += counted.skippedBytes;
    sum_.paddingBytes += counted.paddingBytes;
    if (const int error = reader.readError()) {
      fail(source.name, std::generic_category().message(error));
    }
  }

  const std::string& path_;
  const VisitEntry& visit_;
  log::Accounting sum_;
  bool isDirectory_ = false;
  bool wanted_ = true;
};

}  // namespace

log::Accounting forEachEntry(const std::string& path, const VisitEntry& visit) {
  return Run(path, visit).read();
}

}  // namespace mpuevent::provider
