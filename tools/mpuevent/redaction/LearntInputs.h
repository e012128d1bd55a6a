#ifndef MPUEVENT_TOOL_LEARNTINPUTS_H
#define MPUEVENT_TOOL_LEARNTINPUTS_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "log/framing/LogUnit.h"
#include "log/input/InputFile.h"
#include "redaction/Redaction.h"

namespace mpuevent::tool {

/// An input of which a Redaction has seen all, to be read once more: what it has got since would
/// tell more.
struct LearntInput {
  std::string name;
  std::unique_ptr<log::InputFile> file;  ///< at its beginning
  std::uint64_t bytes;                   ///< to be read
};

/// Reads an input, and what is packed in it, and shows all records to the redaction. What is wrong
/// with it is not told.
LearntInput learn(const std::string& input, log::LogForm form, Redaction& redaction);

/// Opens it once more, unless it is open: a file that has a name is not held open meanwhile.
const log::InputFile& openAgain(LearntInput& input);

}  // namespace mpuevent::tool

#endif
