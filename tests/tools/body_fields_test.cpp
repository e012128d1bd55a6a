#include "BodyFields.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

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
    switch (field.kind) {
      case BodyField::value:
        shown.append("=").append(field.text).append(";");
        break;
      case BodyField::groupBegin:
        shown += "{";
        break;
      case BodyField::groupEnd:
        shown += "}";
        break;
    }
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
      {"<A>1</A><B>2</B>",                                                 "A=1;B=2;"                     },
      {"<A>1</A> \r\n\t<A>2</A> ",                                         "A=1;A=2;"                     },
      {"<></>",                                                            "=;"                           },
      {"<Slot ID = 3>x</Slot ID = 3>",                                     "Slot ID = 3=x;"               },
      {"<A>a<b \\<c\\> &lt; </a> </B></A>",                                "A=a<b \\<c\\> &lt; </a> </B>;"},
      {"<A>1</AB></A>",                                                    "A=1</AB>;"                    },
      {"<A></A>",                                                          "A=;"                          },
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
      {"<A>1</A",                                                          "null"                         },
      {"<A>1<A>",                                                          "null"                         },
      {"<A>1</>",                                                          "null"                         },
      {"<A<B>1</A<B>",                                                     "null"                         },
      {"<",                                                                "null"                         },
      {"<A",                                                               "null"                         },
      {">",                                                                "null"                         },
      {"</A>",                                                             "null"                         },
      {"<1><2><3><4><5><6><7><8>x</8></7></6></5></4></3></2></1>",        "1{2{3{4{5{6{7{8=x;}}}}}}}"    },
      {"<1><2><3><4><5><6><7><8><9>x</9></8></7></6></5></4></3></2></1>",
       "1{2{3{4{5{6{7{8=<9>x</9>;}}}}}}}"                                                                 },
  };
  for (const auto& [body, expected] : cases) {
    EXPECT_EQ(taken(body), expected) << body;
  }
}

/// Whether the fields, written as elements again, are the Body but for what separates them.
bool joinsTo(const BodyFields& fields, std::string_view body) {
  std::vector<std::string_view> open;
  const auto take = [&body](std::string_view tag) {
    const bool there = body.starts_with(tag);
    body.remove_prefix(there ? tag.size() : 0);
    return there;
  };
  const auto takeTag = [&take](std::string_view mark, std::string_view key) {
    return take(mark) && take(key) && take(">");
  };
  for (const BodyField& field : fields.fields()) {
    body.remove_prefix(std::min(body.find_first_not_of(" \n\r\t"), body.size()));
    if (field.kind != BodyField::groupEnd && !takeTag("<", field.key)) {
      return false;
    }
    if (field.kind == BodyField::groupBegin) {
      open.push_back(field.key);
    } else if (field.kind == BodyField::value) {
      if (!take(field.text) || !takeTag("</", field.key)) {
        return false;
      }
    } else {
      if (!takeTag("</", open.back())) {
        return false;
      }
      open.pop_back();
    }
  }
  return open.empty() && body.find_first_not_of(" \n\r\t") == std::string_view::npos;
}

TEST(BodyFields, JoinToTheBodyAgain) {
  std::mt19937 random(152);
  constexpr std::string_view pieces[] = {"<a>", "</a>", "<b b>", "</b b>", "<>", "</>",
                                         " ",   "\n",   "x",     "\\<",    "<",  ">"};
  BodyFields fields;
  int parsed = 0;
  for (int round = 0; round < 200000; ++round) {
    std::string body;
    for (auto count = random() % 12; count != 0; --count) {
      body += pieces[random() % std::size(pieces)];
    }
    if (fields.parse(body)) {
      ++parsed;
      EXPECT_TRUE(joinsTo(fields, body)) << body;
    }
  }
  EXPECT_GT(parsed, 10000);
}

// Fast enough not to be noticed, where quadratic time would take minutes.
TEST(BodyFields, TakeLinearTime) {
  std::string nested;
  std::string unclosed;
  std::string almost;
  for (int i = 0; i < 300000; ++i) {
    nested += "<a>";
    unclosed += "<a></b>";
    almost += "</aaaaaaaaaaaaaaaaaaaaaaa";
  }
  EXPECT_EQ(taken(nested), "null");
  EXPECT_EQ(taken(unclosed), "null");
  EXPECT_EQ(taken(std::string("<aaaaaaaaaaaaaaaaaaaaaaaa>") + almost), "null");
  EXPECT_EQ(taken(std::string("<k>") + nested + "</k>"), std::string("k=") + nested + ";");
  EXPECT_EQ(taken(std::string("<k><k2>") + unclosed + "</k2></k>"),
            std::string("k{k2=") + unclosed + ";}");
}

}  // namespace
}  // namespace mpuevent::tool
