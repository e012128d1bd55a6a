// Nothing that tells whose log it is comes out of a redacted one, wherever it stands there.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "records/SampleRecords.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::tool::tests::Dice;
using mpuevent::tool::tests::linesOf;
using mpuevent::tool::tests::outputOf;
using mpuevent::tool::tests::Words;
using mpuevent::tool::tests::write;

const std::string kEnclosures[] = {"ENC7540-000318", "enc 12=<34>", "E\xC3\xBC-7"};
const std::string kControllers[] = {"SCB2100340-0719A", "SCB2100340-0719A/2",
                                    "CTL\xFF"
                                    "9",
                                    std::string(64, 'S')};
// Of the samples, and one that only texts name.
const std::string kHosts[] = {
    "iqn.2005-03.example.hosts:web-1", "iqn.2004-11.example.array:tank-17.mail-store.volume-0042",
    "iqn.2004-05.com.array:storage.000318", "array 318 <rack=7>", "eui.02004567A425678D"};
const std::string kAddresses[] = {"10.20.3.40", "10.20.3.101", "203.0.113.7", "2001:db8::7:1",
                                  "2001:DB8:0:0:0:0:7:1"};
const std::string kAddressBytes[] = {
    {10, 20, 3, 40 },
    {10, 20, 3, 101},
    std::string("\x20\x01\x0D\xB8\0\0\0\0\0\0\0\0\0\7\0\1", 16)
};

template <std::size_t count>
void add(Words& to, const std::string (&texts)[count]) {
  to.insert(to.end(), std::begin(texts), std::end(texts));
}

/// What must not come out, as bytes.
Words secrets() {
  Words all = {
      "ctl\xC3\xBF"
      "9"};
  add(all, kEnclosures);
  add(all, kControllers);
  add(all, kHosts);
  add(all, kAddresses);
  add(all, kAddressBytes);
  return all;
}

std::string lower(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

std::string hex(const std::string& bytes, const char* between) {
  std::string text;
  for (const char c : bytes) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned char>(c));
    text.append(text.empty() ? "" : between).append(digits);
  }
  return text;
}

void expectNothingTold(const std::string& output, const std::string& form) {
  const std::string text = lower(output);
  for (const std::string& secret : secrets()) {
    for (const std::string& way : {lower(secret), hex(secret, ""), hex(secret, " ")}) {
      const std::size_t at = text.find(way);
      EXPECT_EQ(at, std::string::npos) << form << ": " << text.substr(at < 60 ? 0 : at - 60, 160);
    }
  }
}

/// All samples, with a secret put into every second payload, before the header that has it or not.
std::vector<std::string> makeLog(Dice& dice) {
  std::vector<std::string> log;
  for (const auto& module : mpuevent::samples::modules()) {
    for (const auto& sample : module.samples()) {
      std::string payload = sample.payload;
      // Where the iSCSI decoders show hosts they are learnt, and must stay.
      if (module.source != 22 && module.source != 31 && dice.below(2) == 0) {
        std::string secret = dice.oneOf(secrets());
        if (dice.below(4) == 0) secret = lower(secret);
        const std::string around = dice.below(2) == 0 ? " " : std::string("\0", 1);
        payload.insert(dice.below(payload.size() + 1), around + secret + around);
      }
      log.push_back(mpuevent::support::message(mpuevent::samples::record(module, sample)
                                                   .enclosureSerial(dice.oneOf(kEnclosures))
                                                   .controllerSerial(dice.oneOf(kControllers))
                                                   .payload(payload)
                                                   .str()));
    }
  }
  return log;
}

TEST(Redaction, TellsNothingInAnyForm) {
  Dice dice;
  for (int round = 0; round < 3; ++round) {
    const std::vector<std::string> log = makeLog(dice);
    const std::string file = write("redaction", log);
    for (const std::string form : {"text", "short", "line", "jsonl", "json", "csv"}) {
      Words arguments = {"decode", "--redact", "-o", form, file};
      expectNothingTold(outputOf(arguments), form);
      arguments.insert(arguments.begin() + 2, {"--payload", "always"});
      expectNothingTold(outputOf(arguments), form);
    }
    for (const std::string form : {"text", "json"}) {
      expectNothingTold(outputOf({"summary", "--redact", "-o", form, file}), "summary " + form);
    }
    // The same one for the same serial: chosen by what is there, shown as what it became.
    const Words chosen =
        linesOf(outputOf({"decode", "--redact", "-o", "csv", "--no-header", "--fields",
                          "enclosure_serial", "--enclosure", kEnclosures[1], file}));
    EXPECT_EQ(std::count(chosen.begin(), chosen.end(), chosen.at(0)),
              static_cast<std::ptrdiff_t>(chosen.size()));
    EXPECT_EQ(chosen[0].rfind("enclosure-", 0), 0U);

    const std::string raw = outputOf({"decode", "--redact", "-o", "raw", file});
    expectNothingTold(raw, "raw");
    const std::string cut = write("redacted", {raw});
    EXPECT_EQ(linesOf(outputOf({"decode", "-o", "jsonl", cut})).size(), log.size());
    std::remove(cut.c_str());
    std::remove(file.c_str());
  }
}

}  // namespace
