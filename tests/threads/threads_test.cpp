// Distinct events on distinct threads. The thread sanitizer watches; without it, the results tell.
#include <ProviderTraceServices.h>
#include <gtest/gtest.h>

#include <atomic>
#include <iostream>
#include <streambuf>
#include <string>
#include <thread>
#include <vector>

#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"

namespace {

using mpuevent::support::EventFields;
using Pegasus::ProviderTraceServices;

/// Standard output's place: counts line ends, and writes that are not whole lines.
class LineCounter : public std::streambuf {
 public:
  LineCounter() : terminal_(std::cout.rdbuf(this)) {}
  ~LineCounter() override { std::cout.rdbuf(terminal_); }
  LineCounter(const LineCounter&) = delete;
  LineCounter& operator=(const LineCounter&) = delete;

  std::size_t lines() const { return lines_; }
  std::size_t pieces() const { return pieces_; }

 private:
  int_type overflow(int_type) override {
    ++pieces_;
    return 0;
  }
  std::streamsize xsputn(const char* text, std::streamsize count) override {
    ++(count > 0 && text[count - 1] == '\n' ? lines_ : pieces_);
    return count;
  }

  std::streambuf* terminal_;
  std::atomic<std::size_t> lines_{0};
  std::atomic<std::size_t> pieces_{0};
};

EventFields decoded(const std::string& record) {
  return mpuevent::support::fieldsOf(*mpuevent::support::decode(record));
}

class Threads : public testing::TestWithParam<bool> {};

TEST_P(Threads, DecodeTheSampleAtOnce) {
  std::vector<std::string> records;
  std::vector<EventFields> expected;
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    for (const mpuevent::samples::Sample& sample : module.samples()) {
      records.push_back(mpuevent::samples::record(module, sample).str());
      expected.push_back(decoded(records.back()));
    }
  }

  constexpr std::size_t threadCount = 8;
  std::atomic<std::size_t> differences{0};
  const LineCounter output;
  ProviderTraceServices::setTraceSuppressed(!GetParam());
  std::vector<std::thread> threads;
  for (std::size_t thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([&, thread] {
      // Each begins elsewhere, so that different decoders run side by side, and the same ones too.
      for (std::size_t step = 0; step < 2 * records.size(); ++step) {
        const std::size_t index = (step + thread / 2 * records.size() / 4) % records.size();
        if (!(decoded(records[index]) == expected[index])) ++differences;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  ProviderTraceServices::setTraceSuppressed(true);

  EXPECT_EQ(differences, 0U);
  EXPECT_EQ(output.lines() > 0, GetParam());
  EXPECT_EQ(output.pieces(), 0U) << "trace lines are written whole";
}

INSTANTIATE_TEST_SUITE_P(Tracing, Threads, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& tracing) {
                           return tracing.param ? "On" : "Off";
                         });

}  // namespace
