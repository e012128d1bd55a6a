#include "summary/SummaryCommand.h"

#include <cerrno>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

#include "LogRun.h"
#include "Output.h"
#include "summary/Collector.h"
#include "summary/SummaryForms.h"

namespace mpuevent::tool {

namespace {

bool writePage(const std::string& name, const Summary& summary, const ChoosingOptions& choosing) {
  TextBuffer page;
  appendSummaryHtml(page, summary, choosing);
  errno = 0;
  std::ofstream file(name, std::ios::binary);
  file.write(page.view().data(), static_cast<std::streamsize>(page.size()));
  file.close();
  if (file) return true;
  complain(name + ": " + std::generic_category().message(errno));
  return false;
}

}  // namespace

ExitCode summary(const SummaryOptions& options) {
  Output output;
  LogRun run(options.input, options.choosing, output);
  std::optional<Redaction> redaction;
  if (options.redact) run.redact(redaction.emplace(Redaction::Serials::named));
  Collector collector(redaction ? &*redaction : nullptr);
  LogRun::Watch watch;
  watch.read = [&](const LogFile&, const log::LogUnit& unit) { collector.read(unit); };
  watch.find = [&](const LogFile& file, const log::Finding& finding) {
    collector.find(file, finding);
  };
  watch.endFile = [&](const LogFile& file, const log::Accounting& accounting) {
    collector.endFile(file, accounting);
  };
  run.watch(std::move(watch));
  run.forEachUnit([&](const LogFile& file, const log::LogUnit& unit,
                      std::uint64_t index) { collector.take(file, unit, index); },
                  [&](const LogFile& file) { collector.beginFile(file); });
  const Summary summary = collector.finish();
  if (options.output == SummaryOutput::json) {
    appendSummaryJson(output.text(), summary);
  } else {
    appendSummaryText(output.text(), summary, options.choosing);
  }
  const bool written = options.page.empty() || writePage(options.page, summary, options.choosing);
  output.close();
  return written ? run.exitCode() : ExitCode::failed;
}

}  // namespace mpuevent::tool
