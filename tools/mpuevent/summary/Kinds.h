#ifndef MPUEVENT_TOOL_SUMMARY_KINDS_H
#define MPUEVENT_TOOL_SUMMARY_KINDS_H

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "EventDecoder.h"
#include "summary/FirmwareText.h"
#include "summary/Summary.h"

namespace mpuevent::tool {

/// Counts events by source, event id and Summary, which the payload decides on, too, with few
/// decodes: records that are alike in codes and payload are decoded once. Past a number of decodes,
/// which logs of a usual size don't reach, the codes alone must do: where they have always led to
/// one kind so far it is taken for that, and elsewhere the event is left out.
class Kinds {
 public:
  explicit Kinds(const FirmwareText& firmwareText) : firmwareText_(firmwareText) {}

  void add(const log::LogUnit& unit);

  /// The most frequent first.
  std::vector<KindSummary> byFrequency() const;
  /// Events that are in none of these.
  std::uint64_t leftOut() const { return leftOut_; }

  /// Fills in what the decodes have shown of the source.
  void describe(SourceSummary& source) const;

 private:
  static constexpr std::size_t mostDecodes = 32768;
  static constexpr std::size_t mostKinds = 1024;
  static constexpr std::uint32_t none = UINT32_MAX;

  /// What the events of the same codes have been.
  struct Codes {
    std::uint32_t kind;
    bool several = false;
  };
  struct Source {
    std::string name;
    std::string decoder;
    std::set<unsigned> undecodedCodes;
  };

  std::uint32_t kindOf(const log::LogUnit& unit);
  std::uint32_t decode(const log::LogUnit& unit);
  std::uint32_t kindOfTexts(const log::LogUnit& unit, const Pegasus::Quarn_Event& event);

  const FirmwareText firmwareText_;
  std::uint64_t leftOut_ = 0;
  std::vector<KindSummary> kinds_;
  std::unordered_map<std::string, std::uint32_t> kindsByTexts_;
  std::unordered_map<std::uint64_t, std::uint32_t> kindsByBytes_;
  std::unordered_map<std::uint64_t, Codes> codes_;
  std::array<Source, 256> sources_;
};

}  // namespace mpuevent::tool

#endif
