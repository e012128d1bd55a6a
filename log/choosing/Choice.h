#ifndef MPUEVENT_LOG_CHOOSING_CHOICE_H
#define MPUEVENT_LOG_CHOOSING_CHOICE_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace mpuevent::log {

/// The numbers and texts in a record's header that an event can be chosen by.
enum class HeaderNumber { timestamp, type, source, category, code, slot, logInstance, sequenceId };
enum class HeaderText { enclosureSerial, controllerSerial };

/// Both ends are in it.
struct NumberRange {
  std::uint32_t first = 0;
  std::uint32_t last = UINT32_MAX;
};

/// Which events somebody wants, told from the 152 header bytes of their records alone. All, unless
/// something is required; what is required must all hold.
class Choice {
 public:
  /// One of the ranges, or if negated none, must have the number.
  void require(HeaderNumber number, std::vector<NumberRange> ranges, bool negated = false) {
    numbers_.push_back({number, std::move(ranges), negated});
  }
  /// The text, the bytes before its NUL, must be one of these, or if negated none.
  void require(HeaderText text, std::vector<std::string> texts, bool negated = false) {
    texts_.push_back({text, std::move(texts), negated});
  }

  /// `record` has 152 bytes or more.
  bool chooses(std::span<const unsigned char> record) const {
    return (numbers_.empty() && texts_.empty()) || allHold(record);
  }

  struct NumberTest {
    HeaderNumber number;
    std::vector<NumberRange> ranges;
    bool negated;
  };
  struct TextTest {
    HeaderText text;
    std::vector<std::string> texts;
    bool negated;
  };
  /// What was required, for who chooses among records in another way.
  const std::vector<NumberTest>& numbers() const { return numbers_; }
  const std::vector<TextTest>& texts() const { return texts_; }

 private:
  bool allHold(std::span<const unsigned char> record) const;

  std::vector<NumberTest> numbers_;
  std::vector<TextTest> texts_;
};

}  // namespace mpuevent::log

#endif
