#include "log/input/InputNames.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include "log/input/InputFile.h"

namespace mpuevent::log {

namespace fs = std::filesystem;

/// A file of names, read piece by piece.
class InputNames::List {
 public:
  List(const std::string& file, char end, const Complain& complain)
      : name_(file), file_(file), end_(end), complain_(complain) {}

  std::optional<std::string> next() {
    std::string name;
    bool any = false;
    for (;;) {
      if (at_ == held_ && !refill()) break;
      any = true;
      const unsigned char* const begin = bytes_.data() + at_;
      const unsigned char* const stop =
          std::find(begin, static_cast<const unsigned char*>(bytes_.data() + held_),
                    static_cast<unsigned char>(end_));
      const auto count = static_cast<std::size_t>(stop - begin);
      // Of a name longer than any can be the rest is passed over; opening it will say what's wrong.
      name.append(reinterpret_cast<const char*>(begin),
                  std::min(count, longestName - std::min(longestName, name.size())));
      at_ += count;
      if (at_ == held_) continue;
      ++at_;
      if (!name.empty()) return name;
    }
    return any && !name.empty() ? std::optional(name) : std::nullopt;
  }

 private:
  static constexpr std::size_t longestName = 8192;

  bool refill() {
    const long got = file_.read(bytes_.data(), bytes_.size());
    if (got < 0) complain_(name_, std::generic_category().message(static_cast<int>(-got)));
    at_ = 0;
    held_ = got > 0 ? static_cast<std::size_t>(got) : 0;
    return got > 0;
  }

  const std::string name_;
  InputFile file_;
  const char end_;
  const Complain& complain_;
  std::array<unsigned char, 16384> bytes_{};
  std::size_t at_ = 0;
  std::size_t held_ = 0;
};

InputNames::InputNames(InputSelection selection, Complain complain)
    : selection_(std::move(selection)),
      complain_(std::move(complain)),
      ahead_(selection_.names.rbegin(), selection_.names.rend()) {
  std::error_code ignored;
  several_ = selection_.names.size() > 1 || !selection_.namesFile.empty() ||
             (selection_.names.size() == 1 && fs::is_directory(selection_.names[0], ignored));
  if (!selection_.namesFile.empty()) {
    list_ = std::make_unique<List>(selection_.namesFile, selection_.nameEnd, complain_);
  } else if (selection_.names.empty()) {
    ahead_.emplace_back("-");
  }
}

InputNames::~InputNames() = default;

std::optional<std::string> InputNames::next() {
  for (;;) {
    std::optional<std::string> name;
    if (!ahead_.empty()) {
      name = std::move(ahead_.back());
      ahead_.pop_back();
    } else if (list_) {
      name = list_->next();
    }
    std::error_code ignored;
    if (!name || !fs::is_directory(*name, ignored)) return name;
    addFilesOf(*name);
  }
}

void InputNames::addFilesOf(const std::string& directory) {
  std::vector<std::string> files;
  std::error_code error;
  for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    std::error_code unknown;
    const bool deeper =
        selection_.recursive && !entry->is_symlink(unknown) && entry->is_directory(unknown);
    if (name.starts_with('.') || !(deeper || entry->is_regular_file(unknown))) continue;
    std::string& file = files.emplace_back(directory);
    if (!file.ends_with('/')) file += '/';
    file += name;
  }
  if (error) complain_(directory, error.message());
  std::sort(files.begin(), files.end(), std::greater<>());
  ahead_.insert(ahead_.end(), files.begin(), files.end());
}

}  // namespace mpuevent::log
