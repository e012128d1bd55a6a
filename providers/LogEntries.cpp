#include "LogEntries.h"

#include <syslog.h>

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
    // Whoever opened a FIFO would wait.
    if (!isDirectory_ && !std::filesystem::is_regular_file(path_)) {
      fail_(path_, "neither a file nor a directory");
    }
    log::InputSelection selection;
    selection.names = {path_};
    log::InputNames names(selection, fail_);
    while (const std::optional<std::string> name = wanted_ ? names.next() : std::nullopt) {
      const log::InputFile file(*name);
      forEachLog(sourceOf(file, *name),
                 {[this](const log::LogSource& log) { readLog(log); }, fail_});
    }
    return sum_;
  }

 private:
  void readLog(const log::LogSource& source) {
    log::LogReader reader(
        source.read, log::LogForm::automatic, [](const log::Finding&) {}, source.isIdle,
        source.readAt);
    log::LogUnit unit;
    for (std::uint64_t index = 0; wanted_ && reader.next(unit); ++index) {
      wanted_ = visit_(unit, {path_, source.name, index});
    }
    sum_ += reader.accounting();
    if (const int error = reader.readError()) {
      fail_(source.name, std::generic_category().message(error));
    }
  }

  const std::string& path_;
  const VisitEntry& visit_;
  const bool isDirectory_ = std::filesystem::is_directory(path_);
  const log::InputNames::Complain fail_ = [this](const std::string& name,
                                                 const std::string& reason) {
    if (!isDirectory_) throw std::runtime_error(name + ": " + reason);
    ::syslog(LOG_WARNING, "mpuevent: %s: %s", name.c_str(), reason.c_str());
  };
  log::Accounting sum_;
  bool wanted_ = true;
};

}  // namespace

log::Accounting forEachEntry(const std::string& path, const VisitEntry& visit) {
  return Run(path, visit).read();
}

}  // namespace mpuevent::provider
