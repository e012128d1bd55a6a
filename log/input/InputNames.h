#ifndef MPUEVENT_LOG_INPUT_INPUTNAMES_H
#define MPUEVENT_LOG_INPUT_INPUTNAMES_H

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mpuevent::log {

class InputFile;

/// Which inputs somebody wants read.
struct InputSelection {
  std::vector<std::string> names;  ///< files and directories; "-" is standard input
  std::string namesFile;           ///< has further names, "-" is standard input; empty: none
  char nameEnd = '\n';             ///< what ends a name in it
  bool recursive = false;          ///< with the directories in directories
};

/// The inputs one by one: the names as given and then those in the file of names, in place of a
/// directory its regular files, in the order of their names' bytes. Those that begin with "." are
/// left out, and so are links to directories. The file of names is read as it goes.
class InputNames {
 public:
  /// Told of what cannot be read.
  using Complain = std::function<void(const std::string& name, const std::string& reason)>;

  InputNames(InputSelection selection, Complain complain);
  ~InputNames();
  InputNames(const InputNames&) = delete;
  InputNames& operator=(const InputNames&) = delete;

  /// Nothing when there are no more.
  std::optional<std::string> next();

  /// Whether there may be more than one, by what was given.
  bool several() const { return several_; }

 private:
  class List;

  void addFilesOf(const std::string& directory);

  const InputSelection selection_;
  const Complain complain_;
  bool several_;
  std::vector<std::string> ahead_;  // the next one is the last
  std::unique_ptr<List> list_;      // the file of names, or null
};

}  // namespace mpuevent::log

#endif
