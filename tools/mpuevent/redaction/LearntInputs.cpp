#include "redaction/LearntInputs.h"

#include "log/framing/LogReader.h"
#include "log/input/LogSource.h"

namespace mpuevent::tool {

LearntInput learn(const std::string& input, log::LogForm form, Redaction& redaction) {
  auto file = std::make_unique<log::InputFile>(input);
  const bool named = file->hasPlaces() && input != "-";
  if (!file->hasPlaces()) file->spool();
  std::uint64_t bytes = 0;
  log::LogSource source = sourceOf(*file, input);
  source.read = [&](unsigned char* to, std::size_t room) {
    const long got = file->read(to, room);
    if (got > 0) bytes += static_cast<std::uint64_t>(got);
    return got;
  };
  log::LogVisitor visitor;
  visitor.visit = [&](const log::LogSource& log) {
    log::LogReader reader(
        log.read, form, [](const log::Finding&) {}, log.isIdle, log.readAt);
    log::LogUnit unit;
    while (reader.next(unit)) redaction.learn(unit);
  };
  visitor.broken = [](const std::string&, const std::string&) {};
  forEachLog(source, visitor);
  if (named) {
    file.reset();
  } else {
    file->rewind();
  }
  return {input, std::move(file), bytes};
}

const log::InputFile& openAgain(LearntInput& input) {
  if (!input.file) input.file = std::make_unique<log::InputFile>(input.name);
  return *input.file;
}

}  // namespace mpuevent::tool
