#include "event/NameIndex.h"
#include "event/NameTree.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace mpuevent {
namespace {

std::optional<std::size_t> lowestByLooking(std::string_view text, const std::vector<Range>& names,
                                           std::size_t place) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string_view name = text.substr(names[i].begin, names[i].size());
    if (text.substr(place).starts_with(name)) return i;
  }
  return std::nullopt;
}

struct Index : NameIndex {
  using NameIndex::NameIndex;
};
struct Tree : NameTree {
  Tree(std::string_view text, std::size_t) : NameTree(text) {}
};

template <class Lookup>
struct NameLookup : testing::Test {};
using Lookups = testing::Types<Index, Tree>;
TYPED_TEST_SUITE(NameLookup, Lookups);

TYPED_TEST(NameLookup, FindsTheLowestNameOfTheStack) {
  std::mt19937 random(1115);
  for (unsigned round = 0; round < 400; ++round) {
    const unsigned letters = std::array{1U, 2U, 3U, 20U}[round % 4];
    std::string text;
    const bool isLong = round % 10 == 1;
    for (auto size = 1 + random() % (isLong ? 300 : 90); size > 0; --size) {
      const bool repeats = isLong && text.size() >= 7 && random() % 30 != 0;
      text += repeats ? text.end()[-7] : static_cast<char>(0xFF - random() % letters);
    }
    const std::size_t longest = 1 + random() % (isLong ? 200 : 20);
    TypeParam index(text, longest);
    std::vector<Range> names;
    for (int step = 0; step < 60; ++step) {
      if (!names.empty() && random() % 3 == 0) {
        index.pop();
        names.pop_back();
      } else {
        const std::size_t begin = random() % text.size();
        names.push_back({begin, std::min(text.size(), begin + 1 + random() % longest)});
        index.push(names.back());
      }
      for (std::size_t place = 0; place <= text.size(); ++place) {
        ASSERT_EQ(index.lowestAt(place), lowestByLooking(text, names, place))
            << place << " of " << text << ", round " << round;
      }
    }
  }
}

// What a place shares with a long name is not compared again at the next place that does; the
// shorter name stands where that ends.
TYPED_TEST(NameLookup, FindsAShortNameAtTheEndOfALongOne) {
  const auto knot = [](std::size_t count) {
    std::string text = "a";
    while (count-- > 0) text += "</a";
    return text;
  };
  const std::string longName = knot(80);
  const std::string shortName = knot(25) + "z";
  const std::string text = longName + shortName + knot(60) + "z";
  const std::vector<Range> names = {
      {0,               longName.size()                   },
      {longName.size(), longName.size() + shortName.size()}
  };
  TypeParam index(text, longName.size());
  for (const Range name : names) index.push(name);
  for (std::size_t place = names[1].end; place < text.size(); place += 3) {
    EXPECT_EQ(index.lowestAt(place), lowestByLooking(text, names, place)) << place;
  }
}

}  // namespace
}  // namespace mpuevent
