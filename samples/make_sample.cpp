// Writes a log such as one array sends to its management agent, array.cmap, and the samples of each
// module by themselves, NAME.cmap: CMAP messages, back to back. The bytes are the same on every
// machine and in every run. NAME.cuts has a line a sample: what is shown of it when it is cut.
#include <array>
#include <cstdint>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::samples::Module;
using mpuevent::samples::Sample;

constexpr std::size_t kFewestMessages = 300;

/// Numbers from below `bound`; the distributions of <random> differ between libraries.
class Dice {
 public:
  std::uint32_t below(std::uint32_t bound) {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 17;
    state_ ^= state_ << 5;
    return static_cast<std::uint32_t>((std::uint64_t{state_} * bound) >> 32);
  }

 private:
  std::uint32_t state_ = 0x2545F491;
};

struct Card {
  std::string_view serial;
  std::uint32_t slot;
  std::uint32_t logInstance;
  std::uint32_t sequenceId;
};

struct Event {
  const Module* module;
  Sample sample;
};

std::vector<Event> everySample() {
  std::vector<Event> events;
  for (const Module& module : mpuevent::samples::modules()) {
    for (Sample& sample : module.samples()) {
      events.push_back({&module, std::move(sample)});
    }
  }
  return events;
}

std::string makeLog() {
  std::array<Card, 2> cards = {
      {
       {"SCB2100340-0719A", 0, 1, 48210},
       {"SCB2100352-0719A", 1, 2, 39977},
       }
  };
  std::uint32_t timestamp = 1163421907;
  std::uint32_t handle = 0x00004E21;
  Dice dice;
  std::vector<Event> events = everySample();
  std::string log;
  for (std::size_t written = 0; written < kFewestMessages; written += events.size()) {
    for (std::size_t left = events.size(); left > 1; --left) {
      std::swap(events[left - 1], events[dice.below(static_cast<std::uint32_t>(left))]);
    }
    for (const Event& event : events) {
      Card& card = cards[dice.below(2)];
      card.sequenceId += 1;
      timestamp += 1 + dice.below(240);
      handle += 1 + dice.below(3);
      log += mpuevent::support::message(mpuevent::samples::record(*event.module, event.sample)
                                            .enclosureSerial("ENC7540-000318")
                                            .controllerSerial(card.serial)
                                            .slot(card.slot)
                                            .logInstance(card.logInstance)
                                            .sequenceId(card.sequenceId)
                                            .timestamp(timestamp)
                                            .str(),
                                        handle);
    }
  }
  return log;
}

std::string makeLog(const Module& module) {
  std::string log;
  for (const Sample& sample : module.samples()) {
    log += mpuevent::support::message(mpuevent::samples::record(module, sample).str());
  }
  return log;
}

/// The steps in which a record that grows shows more and more.
class Steps {
 public:
  void add(std::size_t held, const mpuevent::support::Texts& texts) {
    const auto& [id, summary, body] = texts;
    std::size_t elements = 0;
    for (std::size_t at = 0; (at = body.find("</", at)) != std::string::npos; ++at) ++elements;
    const bool another = held > 0 && (id != id_ || !summary.starts_with(summary_));
    if (held == 0 || elements != elements_ || another) {
      text_ += ' ' + std::to_string(held) + ':' + std::to_string(elements) + (another ? "*" : "");
    }
    elements_ = elements;
    id_ = id;
    summary_ = summary;
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
  std::size_t elements_ = 0;
  std::string id_;
  std::string summary_;
};

/// What a record shows of which only the first bytes are held: "bytes of payload:elements" where
/// the number of elements changes, with a star where event id or Summary become another text, not
/// just a longer one.
std::string elementsAtCuts(const Module& module, const Sample& sample) {
  const std::string record = mpuevent::samples::record(module, sample).str();
  Steps steps;
  for (std::size_t held = 0; held <= sample.payload.size(); ++held) {
    std::string cut = record.substr(0, record.size() - sample.payload.size() + held);
    const std::unique_ptr<Pegasus::Quarn_Event> event(module.construct(
        reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(cut.data()), static_cast<int>(cut.size())));
    steps.add(held, mpuevent::support::textsOf(*event));
  }
  return steps.text();
}

std::string elementsAtCuts(const Module& module) {
  std::string lines;
  for (const Sample& sample : module.samples()) {
    lines += "Elements at cuts:" + elementsAtCuts(module, sample) + '\n';
  }
  return lines;
}

void write(const std::string& directory, std::string_view name, const std::string& log) {
  std::ofstream out(directory + '/' + std::string(name), std::ios::binary);
  out.exceptions(std::ios::badbit | std::ios::failbit);
  out.write(log.data(), static_cast<std::streamsize>(log.size())).flush();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_sample DIRECTORY\n";
    return 2;
  }
  try {
    for (const Module& module : mpuevent::samples::modules()) {
      const std::string name(module.name);
      write(argv[1], name + ".cmap", makeLog(module));
      write(argv[1], name + ".cuts", elementsAtCuts(module));
    }
    write(argv[1], "array.cmap", makeLog());
  } catch (const std::exception& failure) {
    std::cerr << "make_sample: " << argv[1] << ": " << failure.what() << '\n';
    return 2;
  }
  return 0;
}
