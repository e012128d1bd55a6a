#include "BodyFields.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace mpuevent::tool {
namespace {

/// "key=text;" for values, "key{...}" for groups; "null" for a Body that is no run of elements.
std::string taken(std::string_view body) {
  BodyFields fields;
  if (!fields.parse(body)) {
    EXPECT_TRUE(fields.fields().empty());
    return "null";
  }
  std::string shown;
  for (const BodyField& field : fields.fields()) {
    shown += field.key;
    if (field.kind == BodyField::value) shown.append("=").append(field.text).append(";");
    if (field.kind == BodyField::groupBegin) shown += "{";
    if (field.kind == BodyField::groupEnd) shown += "}";
  }
  return shown;
}

TEST(BodyFields, AreTakenApart) {
  const struct {
    std::string_view body;
    std::string_view taken;
  } cases[] = {
      {"",                                                                 ""                             },
      {" \n",                                                              ""                             },
      {"<A>1</A>",                                                         "A=1;"                         },
      {"<A>1</A> \r\n\t<A>2</A> ",                                         "A=1;A=2;"                     },
      {"<></>",                                                            "=;"                           },
      {"<Slot ID = 3>x</Slot ID = 3>",                                     "Slot ID = 3=x;"               },
      {"<A>a<b \\<c\\> &lt; </a> </B></A>",                                "A=a<b \\<c\\> &lt; </a> </B>;"},
      {"<A>1</AB></A>",                                                    "A=1</AB>;"                    },
      {"<A>1</A>2</A>",                                                    "null"                         },
      {"<G><A>1</A><B>2</B></G>",                                          "G{A=1;B=2;}"                  },
      {"<G><A>1</A> </G><B>2</B>",                                         "G{A=1;}B=2;"                  },
      {"<G><H><A>1</A></H><></></G>",                                      "G{H{A=1;}=;}"                 },
      {"<G> <A>1</A></G>",                                                 "G= <A>1</A>;"                 },
      {"<G><A>1</A>x</G>",                                                 "G=<A>1</A>x;"                 },
      {"<G><H><A>1</A></H><B></G>",                                        "G=<H><A>1</A></H><B>;"        },
      {"<A><A>1</A></A>",                                                  "null"                         },
      {"text",                                                             "null"                         },
      {"<A>1</A>,<B>2</B>",                                                "null"                         },
      {"<A>1</>",                                                          "null"                         },
      {"<A<B>1</A<B>",                                                     "null"                         },
      {"<A",                                                               "null"                         },
      {">",                                                                "null"                         },
      {"<1><2><3><4><5><6><7><8>x</8></7></6></5></4></3></2></1>",        "1{2{3{4{5{6{7{8=x;}}}}}}}"    },
      {"<1><2><3><4><5><6><7><8><9>x</9></8></7></6></5></4></3></2></1>",
       "1{2{3{4{5{6{7{8=<9>x</9>;}}}}}}}"                                                                 },
  };
  for (const auto& [body, expected] : cases) EXPECT_EQ(taken(body), expected) << body;
}

/// The fields written as elements again, nothing between them.
std::string joined(const BodyFields& fields) {
  std::string body;
  std::vector<std::string> open;
  for (const BodyField& field : fields.fields()) {
    const std::string key(field.key);
    if (field.kind != BodyField::groupEnd) body += "<" + key + ">";
    if (field.kind == BodyField::groupBegin) {
      open.push_back(key);
      continue;
    }
    body +=
        std::string(field.text) + "</" + (field.kind == BodyField::value ? key : open.back()) + ">";
    if (field.kind == BodyField::groupEnd) open.pop_back();
  }
  return body;
}

TEST(BodyFields, JoinToTheBodyAgain) {
  std::mt19937 random(152);
  constexpr std::string_view pieces[] = {"<a>", "</a>", "<b b>", "</b b>", "<>",
                                         "</>", "x",    "\\<",   "<",      ">"};
  BodyFields fields;
  int parsed = 0;
  for (int round = 0; round < 200000; ++round) {
    std::string body;
    for (auto count = random() % 12; count != 0; --count) {
      body += pieces[random() % std::size(pieces)];
    }
    if (!fields.parse(body)) continue;
    ++parsed;
    EXPECT_EQ(joined(fields), body);
  }
  EXPECT_GT(parsed, 10000);
}

// Fast enough not to be noticed, where quadratic time would take minutes.
TEST(BodyFields, TakeLinearTime) {
  std::string nested;
  std::string unclosed;
  std::string almost = "<aaaaaaaaaaaaaaaaaaaaaaaa>";
  for (int i = 0; i < 300000; ++i) {
    nested += "<a>";
    unclosed += "<a></b>";
    almost += "</aaaaaaaaaaaaaaaaaaaaaaa";
  }
  EXPECT_EQ(taken(nested), "null");
  EXPECT_EQ(taken(almost), "null");
  EXPECT_EQ(taken("<k>" + nested + "</k>"), "k=" + nested + ";");
  EXPECT_EQ(taken("<k><k2>" + unclosed + "</k2></k>"), "k{k2=" + unclosed + ";}");
}

}  // namespace
}  // namespace mpuevent::tool
