// Writes what is made of the tool's commands and options: the completions, and the man pages as
// scdoc reads them. A page of PAGES has the lines @commands@ and @options@ where these are to
// stand, and
// @NAME@ for the text of the file NAME.part beside it.
//
//   mpuevent_pages PAGES OUT
#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "Pages.h"

namespace {

using namespace mpuevent::pages;
namespace fs = std::filesystem;

void write(const fs::path& file, const std::string& text) {
  std::ofstream out(file, std::ios::binary);
  out << text;
  if (!out.flush()) throw std::runtime_error(file.string() + ": cannot be written");
}

std::string read(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(file.string() + ": cannot be read");
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string expand(const fs::path& page, const std::vector<CommandFacts>& commands,
                   const CommandFacts& command) {
  std::istringstream lines(read(page));
  std::string text;
  for (std::string line; std::getline(lines, line);) {
    if (line == "@options@") {
      text += manOptions(command);
    } else if (line == "@commands@") {
      text += manCommands(commands);
    } else if (line.size() > 2 && line.front() == '@' && line.back() == '@') {
      text += read(page.parent_path() / (line.substr(1, line.size() - 2) + ".part"));
    } else {
      text += line + '\n';
    }
  }
  return text;
}

void writePages(const fs::path& pages, const fs::path& out) {
  const std::vector<CommandFacts> commands = factsOfCommands();
  write(out / "mpuevent.bash", bashCompletion(commands));
  write(out / "_mpuevent", zshCompletion(commands));
  for (const fs::directory_entry& page : fs::directory_iterator(pages)) {
    if (page.path().extension() != ".scd") continue;
    const std::string name = page.path().filename().string();
    const auto command = std::find_if(
        commands.begin(), commands.end(),
        [&name](const CommandFacts& any) { return name == "mpuevent-" + any.name + ".1.scd"; });
    write(out / name,
          expand(page, commands, command == commands.end() ? commands.front() : *command));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "mpuevent_pages PAGES OUT\n";
    return 2;
  }
  try {
    writePages(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::cerr << "mpuevent_pages: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
