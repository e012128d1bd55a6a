#include <MPUEvent/AWR8P_Event.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <tuple>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::support::decode;
using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;
using mpuevent::support::utf8;
using Pegasus::AWR8P_Event;
using Pegasus::awrEvtHdr_s;

enum Type : std::uint32_t { text = 0, binary = 1, container = 2, name = 3 };

constexpr std::size_t longestPayload = 65471 - 152;

std::string header(std::uint32_t type, std::uint32_t length) {
  return Payload().u32(type).u32(length).str();
}

std::string node(std::uint32_t type, const std::string& data) {
  return header(type, static_cast<std::uint32_t>(data.size())) + data;
}

std::string textNode(std::uint32_t type, std::string_view value) {
  return node(type, Payload().text(value).str());
}

/// Body, Summary, EventID.
using Texts = std::tuple<std::string, std::string, std::string>;

Texts textsOf(const Pegasus::Quarn_Event& event) {
  return {utf8(event.getBody()), utf8(event.getSummary()), utf8(event.getEventID())};
}

Texts decoded(const std::string& payload) {
  return textsOf(*decode(RecordBuilder().source(9).id(77).payload(payload).str()));
}

awrEvtHdr_s* pointer(std::string& bytes) { return reinterpret_cast<awrEvtHdr_s*>(bytes.data()); }

/// What stands for the missing bytes of a short line: four blanks each.
std::string missing(std::size_t count) { return std::string(4 * count, ' '); }

TEST(AwrNodes, ShowBytesInLinesOfSixteen) {
  const auto expectDump = [](const std::string& bytes, const std::string& body) {
    EXPECT_EQ(decoded(node(binary, bytes)), (Texts{body, "", "77"}));
  };
  const std::string fullLine =
      "<_0000>30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66 01234567|89abcdef</_0000>";
  expectDump("AB<C", "<_0000>41 42 3c 43 " + missing(12) + " AB&lt;C</_0000>");
  expectDump(std::string("\0 \x1F~\x7F\x80\xFF", 7),
             "<_0000>00 20 1f 7e 7f 80 ff " + missing(9) + " . .~...</_0000>");
  expectDump(";=>&\"|ab",
             "<_0000>3b 3d 3e 26 22 7c 61 62  " + missing(8) + "..&gt;&\"|ab|</_0000>");
  expectDump("123456789abcdef", "<_0000>31 32 33 34 35 36 37 38  39 61 62 63 64 65 66 " +
                                    missing(1) + "12345678|9abcdef</_0000>");
  expectDump("0123456789abcdef", fullLine);
  expectDump("0123456789abcdefg", fullLine + "<_0010>67 " + missing(15) + " g</_0010>");
  // A lone backslash at the end of an entry becomes a period.
  expectDump("a\\", "<_0000>61 5c " + missing(14) + " a.</_0000>");
  expectDump("\\", "<_0000>5c " + missing(15) + " .</_0000>");
}

TEST(AwrNodes, AreShownInTheOrderOfTheRecord) {
  const std::string first = textNode(text, "first");
  const std::string bytes = node(binary, "0123456789abcdef");
  const std::string last = textNode(text, "last");
  const std::string line =
      "<_0000>30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66 01234567|89abcdef</_0000>";
  const Texts expected = {"<_>first</_>" + line + "<_>last</_>", "first", "77"};

  EXPECT_EQ(decoded(node(container, first + bytes + last)), expected);
  EXPECT_EQ(decoded(node(container, node(9, first) + first + node(container, "") + bytes + last)),
            expected);
  EXPECT_EQ(decoded(first + last), (Texts{"<_>first</_>", "first", "77"}));
  EXPECT_EQ(decoded(node(4, first)), (Texts{"", "", "77"}));
}

TEST(AwrNodes, NameTheEvent) {
  EXPECT_EQ(decoded(textNode(name, "LINK")), (Texts{"", "", "LINK"}));
  EXPECT_EQ(
      decoded(node(container, textNode(name, "A") + textNode(text, "t") + textNode(name, "B"))),
      (Texts{"<_>t</_>", "t", "B"}));
}

TEST(AwrNodes, BecomeTextOneByOne) {
  EXPECT_EQ(decoded(node(container, textNode(text, "\xC3\xA9") + textNode(text, "\xC3\xA9\xB1") +
                                        textNode(text, "\xE2\x82\xAC"))),
            (Texts{"<_>\xC3\xA9</_><_>\xC3\x83\xC2\xA9\xC2\xB1</_><_>\xE2\x82\xAC</_>", "\xC3\xA9",
                   "77"}));
  EXPECT_EQ(decoded(node(container, textNode(text, "<a&\\") + textNode(text, "b\\\\"))),
            (Texts{"<_><a&.</_><_>b\\\\</_>", "<a&\\", "77"}));
}

TEST(AwrNodes, AreAsLongAsTheySay) {
  const std::string sixteen = node(binary, "0123456789abcdef");
  const std::string line =
      "<_0000>30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66 01234567|89abcdef</_0000>";
  const std::string end = textNode(text, "end");
  const std::string late = textNode(text, "late");
  const auto expectAlike = [](const std::string& payload, const std::string& body,
                              const std::string& summary) {
    EXPECT_EQ(decoded(payload), (Texts{body, summary, "77"}));
    AWR8P_Event event(nullptr, 0);
    std::string bytes = payload + std::string(200, '\0');
    event.awr8p_parse_evt(pointer(bytes));
    EXPECT_EQ(textsOf(event), (Texts{body, summary, ""}));
  };
  // Longer than their container: shown whole, and the next is what follows behind the container.
  expectAlike(header(container, 12) + sixteen, line, "");
  expectAlike(header(container, 1) + sixteen + end, line, "");
  expectAlike(header(container, 9) + header(container, 36) + sixteen + end, line + "<_>end</_>",
              "end");
  expectAlike(node(container, header(container, 8) + sixteen.substr(0, 8)) + sixteen.substr(8),
              line, "");
  expectAlike(node(container, header(container, 8) + header(binary, 12) + end) + late,
              "<_0000>00 00 00 00 00 00 00 04  65 6e 64 00 " + missing(4) +
                  "........|end.</_0000><_>end</_>",
              "end");
  // Part of a head in the container is enough.
  expectAlike(node(container, node(container, end + std::string(7, '\0')) + end),
              "<_>end</_><_></_><_>end</_>", "end");
  // A negative length is no length of a container.
  expectAlike(header(container, 0x80000000) + end, "", "");
}

TEST(AwrNodes, EndWithTheRecord) {
  const std::string line = "<_0000>61 62 63 " + missing(13) + " abc</_0000>";
  const std::string end = textNode(text, "end");
  EXPECT_EQ(decoded(header(container, 5000) + header(binary, 0x7FFFFFFF) + "abc"),
            (Texts{line, "", "77"}));
  EXPECT_EQ(decoded(header(container, 5000) + end + header(text, 0).substr(0, 7)),
            (Texts{"<_>end</_>", "end", "77"}));
  EXPECT_EQ(decoded(header(name, 0).substr(0, 7)), (Texts{"", "", "77"}));
  EXPECT_EQ(decoded(""), (Texts{"", "", "77"}));
}

/// A tree that shows a text of this size twice as often with each fold: an inner container of
/// eight bytes holds one that reaches to the end, and is followed by the same bytes.
std::string folded(unsigned folds, std::size_t size) {
  std::string tree = header(container, 0x7FFFFFFF);
  for (unsigned i = 0; i < folds; ++i) tree += header(container, 8) + header(container, 0x7FFFFFFF);
  return tree + node(text, std::string(size, 'x'));
}

TEST(AwrNodes, ComeAgainSeveralTimesAtMost) {
  const auto timesShown = [](const std::string& tree) {
    const std::string body = std::get<0>(decoded(tree));
    std::size_t count = 0;
    for (std::size_t at = 0; (at = body.find("<_>", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  EXPECT_EQ(timesShown(folded(0, 100)), 1U);
  EXPECT_EQ(timesShown(folded(2, 100)), 4U);
  EXPECT_EQ(timesShown(folded(3, 1000)), 8U);
  EXPECT_EQ(timesShown(folded(4, 1000)), 8U);
  EXPECT_LE(timesShown(folded(4000, 1000)) * 1000, 8 * folded(4000, 1000).size());
}

/// What a subclass sees of the entries.
class Appended : public AWR8P_Event {
 public:
  Appended() : AWR8P_Event(nullptr, 0) {}
  void appendBody(char* text) override {
    seen += text;
    AWR8P_Event::appendBody(text);
  }
  std::string seen;
};

TEST(AwrNodes, PassThroughAppendBody) {
  Appended event;
  std::string tree = node(container, textNode(text, "a") + node(binary, "b"));
  event.awr8p_parse_evt(pointer(tree));
  event.awr8p_dump_bin(pointer(tree));
  EXPECT_EQ(event.seen.substr(0, 18), "<_>a</_><_0000>62 ");
  EXPECT_EQ(event.seen, utf8(event.getBody()));
}

TEST(AwrNodes, EndTheirTextsAtTheNulOrWithTheRecord) {
  EXPECT_EQ(decoded(header(text, 2) + "abcd"), (Texts{"<_>abcd</_>", "abcd", "77"}));
  EXPECT_EQ(decoded(node(text, "") + '\0'), (Texts{"<_></_>", "", "77"}));
  EXPECT_EQ(decoded(node(text, "")), (Texts{"<_></_>", "", "77"}));
  EXPECT_EQ(decoded(header(name, 0) + "ab"), (Texts{"", "", "ab"}));
  // Neither their own length nor the end of their container stops them, and no other node starts
  // in them that shows anything.
  EXPECT_EQ(decoded(node(container, header(text, 4) + "abcd" + textNode(text, "e"))),
            (Texts{"<_>abcd</_><_>e</_>", "abcd", "77"}));
  EXPECT_EQ(decoded(node(container, header(text, 4) + "abcd" + header(0x58595A5B, 0))),
            (Texts{"<_>abcdXYZ[</_>", "abcdXYZ[", "77"}));
  EXPECT_EQ(decoded(node(container, header(text, 2) + "ab") + "cd"),
            (Texts{"<_>abcd</_>", "abcd", "77"}));
}

TEST(AwrNodes, OfAnImpossibleLengthEndTheirContainer) {
  for (const std::uint32_t length : {0xFFFFFFFFU, 0xFFFFFFFCU, 0xFFFFFFF8U, 0xFFFFFF00U,
                                     0x80000000U, 0x7FFFFFFFU, 0x7FFFFFF8U}) {
    SCOPED_TRACE(length);
    const std::string hidden = textNode(text, "hidden");
    const std::string inner = node(container, header(9, length) + hidden);
    EXPECT_EQ(decoded(node(container, inner + textNode(text, "end"))),
              (Texts{"<_>end</_>", "end", "77"}));
  }
  // A container counts its children down from a signed length.
  EXPECT_EQ(decoded(header(container, 0x80000000) + textNode(text, "hidden")),
            (Texts{"", "", "77"}));
  EXPECT_EQ(decoded(header(container, 0x7FFFFFFF) + textNode(text, "shown")),
            (Texts{"<_>shown</_>", "shown", "77"}));
}

TEST(AwrNodes, NestAsDeepAsARecordCanHold) {
  const std::string innermost = textNode(text, "innermost");
  std::string chain;
  while (chain.size() + 8 + innermost.size() <= longestPayload) {
    chain += header(container, 0x7FFFFFFF);
  }
  EXPECT_EQ(decoded(chain + innermost), (Texts{"<_>innermost</_>", "innermost", "77"}));
}

TEST(AwrNodes, FromOutsideMayBeAsLongAsAPayload) {
  AWR8P_Event event(nullptr, 0);
  std::string tree = textNode(text, std::string(70000, 'x'));
  event.awr8p_parse_evt(pointer(tree));
  EXPECT_TRUE(utf8(event.getBody()) == "<_>" + std::string(65535 - 8, 'x') + "</_>");
}

TEST(AwrNodes, CanBeAddedFromOutside) {
  AWR8P_Event event(nullptr, 0);
  std::string tree = node(container, node(binary, "A") + header(text, 99) + "cut");
  std::string second = header(text, 0) + "longer than its length";
  std::string bytes = node(name, "B");
  std::string named = header(name, 0) + "longer than its length, too";
  event.awr8p_parse_evt(pointer(tree));
  event.awr8p_parse_evt(pointer(second));
  event.awr8p_parse_evt(pointer(named));
  event.awr8p_dump_bin(pointer(bytes));
  event.awr8p_parse_evt(nullptr);
  event.awr8p_dump_bin(nullptr);
  EXPECT_EQ(textsOf(event), (Texts{"<_0000>41 " + missing(15) +
                                       " A</_0000><_>cut</_><_>longer than its length</_>"
                                       "<_0000>42 " +
                                       missing(15) + " B</_0000>",
                                   "cut", "longer than its length, too"}));
}

}  // namespace
