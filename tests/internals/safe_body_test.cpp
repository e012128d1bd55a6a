#include "event/SafeBody.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "event/SafeText.h"

namespace mpuevent {
namespace {

// Whether texts are made safe one by one or by a pass over the whole body must not show.
TEST(SafeBody, IsWhatAPassOverTheWholeBodyGives) {
  std::mt19937 random(18);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  const std::string_view pieces[] = {"<",  "</",   ">",   "/",    "\\",    "=",       "%",
                                     "<K", "</K>", "</K", "</L>", "</Key", "</Group", "</",
                                     "a",  "<a>",  "b",   "</a>", "</>",   "<a></a>", "\xC3\xA9"};
  int closed = 0;
  for (int round = 0; round < 20000; ++round) {
    // Few pieces of some kinds, so that most bodies need no pass.
    const std::size_t kinds = 1 + below(std::size(pieces));
    std::string texts[5];
    for (std::string& text : texts) {
      for (std::size_t left = below(6); left > 0; --left) text += pieces[below(kinds)];
    }
    SafeBody body;
    BodyBuffer raw;
    const auto add = [&](std::string_view key, const std::string& text) {
      body.recordElement(key, text);
      raw.element(key, text);
    };
    add("Key", texts[0]);
    body.literals().element("Own", "50\\%");
    body.countEscapes(1);
    raw.element("Own", "50%");
    add("K", texts[1]);
    body.openGroup("Group");
    raw.openGroup("Group");
    add("Key", texts[2]);
    add("L", texts[3]);
    body.closeGroup();
    raw.closeGroup("Group");
    add("L", texts[4]);
    EXPECT_EQ(body.rawSize(), raw.size());
    const std::string safe = safeBytes(raw.view());
    closed += safe.find("</Group>") == std::string::npos ? 1 : 0;
    ASSERT_TRUE(body.string() == safeString(raw.view())) << raw.view() << "\n" << safe;
  }
  EXPECT_GT(closed, 0);  // some texts close what they stand in
}

}  // namespace
}  // namespace mpuevent
