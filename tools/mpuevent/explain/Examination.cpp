#include "explain/Examination.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace mpuevent::tool {

namespace {

// One bit each, in an order that does not leave the high ones to the end: not always all are tried.
constexpr std::array<unsigned char, 8> kMasks = {0x01, 0x80, 0x10, 0x04, 0x40, 0x02, 0x20, 0x08};
constexpr unsigned kLastMask = 0xFF;
// How far apart the bytes lie that are changed at once.
constexpr std::array<std::size_t, 2> kDistances = {8, 5};

// What flipping bits may cost, by Specimen::nanoseconds().
constexpr std::uint64_t kFlippingCost = 600'000'000;
// Of a record that is too long for every byte, this much is not sampled, header included.
constexpr std::size_t kWholeFront = 512;
constexpr std::size_t kGridPoints = 128;

// How many times longer than the limit an ordinary record may take.
constexpr int kPatience = 10;

constexpr std::size_t kMostNames = 8;
constexpr std::string_view kDecides = "decides the layout";
constexpr std::string_view kNotShown = "not shown";
constexpr std::string_view kNotExamined = "not examined";

void addName(std::string& to, std::string_view name) {
  if (!to.empty()) to += ", ";
  to += name;
}

}  // namespace

Examination::Examination(const log::LogUnit& unit, std::chrono::milliseconds limit)
    : specimen_(unit),
      firstByte_(unit.header == nullptr ? log::messageHeaderSize : 0),
      begin_(std::chrono::steady_clock::now()),
      limit_(limit),
      findings_(specimen_.bytes().size()) {}

bool Examination::outOfTime() const { return std::chrono::steady_clock::now() >= end_; }

// Lets the time be out when so many percent of it are gone.
void Examination::allow(int percent) { end_ = begin_ + limit_ * percent / 100; }

// What it does to the event when all these bytes are changed at once.
Effect Examination::effectOf(std::span<const std::size_t> positions, unsigned mask) {
  const auto change = [&] {
    for (const std::size_t at : positions) {
      specimen_.bytes()[at] = static_cast<unsigned char>(specimen_.bytes()[at] ^ mask);
    }
  };
  Effect effect;
  change();
  specimen_.compare(effect);
  change();
  return effect;
}

void Examination::flipBits(std::size_t position) {
  Finding& finding = findings_[position];
  if (finding.known || outOfTime()) return;
  const unsigned value = specimen_.bytes()[position];
  for (unsigned i = 0; i < masks_; ++i) {
    // A blank does not become a NUL: it makes what the letters beside it make.
    const unsigned mask = kMasks[i] == value ? value | 1U : kMasks[i];
    finding.effect.add(effectOf({&position, 1}, mask));
  }
  finding.known = true;
  finding.sampled = masks_ < kMasks.size();
}

void Examination::flipBits() {
  const std::size_t count = findings_.size() - firstByte_;
  const auto affordable = static_cast<std::size_t>(kFlippingCost / specimen_.nanoseconds());
  masks_ = static_cast<unsigned>(std::clamp(affordable / count, std::size_t{1}, kMasks.size()));
  // What an ordinary record makes must not depend on how busy the machine is.
  if (masks_ == kMasks.size()) limit_ *= kPatience;
  allow(50);
  if (affordable < count) {
    flipSome(affordable);
    return;
  }
  for (std::size_t at = firstByte_; at < findings_.size(); ++at) flipBits(at);
}

// A few bytes of all the rest, the front whole, and what is left of `count` where the bytes on both
// sides of a gap make different things.
void Examination::flipSome(std::size_t count) {
  const std::size_t size = findings_.size();
  const std::size_t front = std::min({size, firstByte_ + kWholeFront, firstByte_ + count});
  Positions seen;
  const std::size_t step = 1 + (size - front) / kGridPoints;
  for (std::size_t at = front; at < size; at += step) seen.push_back(at);
  if (front < size) seen.push_back(size - 1);
  for (const std::size_t at : seen) flipBits(at);
  for (std::size_t at = firstByte_; at < front; ++at) flipBits(at);
  std::size_t left = count - std::min(count, seen.size() + front - firstByte_);
  for (std::size_t i = 1; i < seen.size(); ++i) divide(seen[i - 1], seen[i], left);
}

// Looks closer at the gap between two bytes, as long as there is something `left`.
void Examination::divide(std::size_t begin, std::size_t end, std::size_t& left) {
  if (end - begin < 2 || left == 0 || findings_[begin].effect == findings_[end].effect) return;
  const std::size_t middle = begin + (end - begin) / 2;
  flipBits(middle);
  --left;
  divide(begin, middle, left);
  divide(middle, end, left);
}

// Between two bytes that make the same, all bytes are taken to make it.
void Examination::fillGaps() {
  for (std::size_t at = firstByte_ + 1; at < findings_.size(); ++at) {
    const std::size_t before = at - 1;
    if (findings_[at].known || !findings_[before].known) continue;
    const auto behind = std::find_if(findings_.begin() + static_cast<std::ptrdiff_t>(at),
                                     findings_.end(), [](const Finding& f) { return f.known; });
    if (behind == findings_.end()) return;
    if (behind->effect == findings_[before].effect) {
      for (auto& gap : std::span(findings_.begin() + static_cast<std::ptrdiff_t>(at), behind)) {
        gap = {findings_[before].effect, true, true};
      }
    }
    at = static_cast<std::size_t>(behind - findings_.begin());
  }
}

// The bytes of which not all is known yet: with nothing having changed (`silent`), or with nothing
// having decided.
Examination::Positions Examination::open(bool silent) const {
  Positions positions;
  for (std::size_t at = firstByte_; at < findings_.size(); ++at) {
    const Finding& finding = findings_[at];
    if (finding.known && !finding.effect.decides && finding.effect.any() != silent) {
      positions.push_back(at);
    }
  }
  return positions;
}

// Gives these bytes every other value. One byte may hide what another one does: a number whose high
// byte is wrong may not care for its low byte. So the bytes that are changed together lie apart,
// and with other ones the second time.
void Examination::tryAllValues(bool silent) {
  const bool all = masks_ == kMasks.size();
  for (const std::size_t distance : {kDistances[0], silent && all ? kDistances[1] : 0}) {
    const Positions positions = open(silent);
    const std::size_t rounds = positions.size() <= distance ? positions.size() : distance;
    for (std::size_t round = 0; round < rounds; ++round) {
      Positions apart;
      for (std::size_t i = 0; i < positions.size(); ++i) {
        if ((rounds < distance ? i : positions[i] % distance) == round)
          apart.push_back(positions[i]);
      }
      tryTogether(std::move(apart), silent);
    }
  }
}

void Examination::tryTogether(Positions positions, bool silent) {
  for (unsigned mask = 1; mask <= kLastMask && !positions.empty(); ++mask) {
    while (!positions.empty() && tells(effectOf(positions, mask), silent)) {
      const std::optional<std::size_t> found = findOne(positions, mask, silent);
      if (!found) break;
      Effect& effect = findings_[*found].effect;
      for (unsigned each = silent ? 1 : mask; each <= (silent ? kLastMask : mask); ++each) {
        effect.add(effectOf({&*found, 1}, each));
      }
      positions.erase(std::lower_bound(positions.begin(), positions.end(), *found));
    }
    if (outOfTime() && mask < kLastMask) {
      for (const std::size_t at : positions) findings_[at].sampled = true;
      return;
    }
  }
}

bool Examination::tells(const Effect& effect, bool silent) {
  return silent ? effect.any() : effect.decides;
}

// One of several bytes that tells, with the same change, without the others.
std::optional<std::size_t> Examination::findOne(std::span<const std::size_t> positions,
                                                unsigned mask, bool silent) {
  if (positions.size() == 1) return positions.front();
  const std::size_t half = positions.size() / 2;
  for (const auto part : {positions.first(half), positions.subspan(half)}) {
    if (outOfTime() || !tells(effectOf(part, mask), silent)) continue;
    if (const auto found = findOne(part, mask, silent)) return found;
  }
  return std::nullopt;
}

std::string Examination::label(const Finding& finding,
                               const std::vector<std::string>& names) const {
  if (!finding.known) return std::string(kNotExamined);
  const Effect& effect = finding.effect;
  std::string label;
  const std::size_t count = effect.shown.size();
  const std::size_t told = count <= kMostNames ? count : kMostNames - 1;
  for (std::size_t i = 0; i < told; ++i) addName(label, names[effect.shown[i]]);
  if (told < count) addName(label, std::to_string(count - told) + " more");
  if (effect.decides || (effect.summary && count == 0)) {
    addName(label, kDecides);
  } else if (effect.summary) {
    addName(label, "summary");
  }
  return label.empty() ? std::string(kNotShown) : label;
}

std::vector<ByteRun> Examination::runs() {
  flipBits();
  fillGaps();
  allow(75);
  tryAllValues(true);
  allow(100);
  tryAllValues(false);

  const std::vector<std::string> names = specimen_.names();
  std::vector<ByteRun> runs;
  const Finding* last = nullptr;
  for (std::size_t at = firstByte_; at < findings_.size(); ++at) {
    const Finding& finding = findings_[at];
    const auto offset =
        static_cast<std::ptrdiff_t>(at) - static_cast<std::ptrdiff_t>(log::messageHeaderSize);
    const Part part = offset < 0                                              ? Part::message
                      : static_cast<std::size_t>(offset) < Record::headerSize ? Part::header
                                                                              : Part::payload;
    const bool same =
        last != nullptr && finding.known == last->known && finding.effect == last->effect;
    std::string field = same ? runs.back().field : label(finding, names);
    if (runs.empty() || part != runs.back().part || field != runs.back().field) {
      runs.push_back({offset, 0, part, std::move(field), false});
    }
    ++runs.back().length;
    runs.back().sampled = runs.back().sampled || finding.sampled || !finding.known;
    last = &finding;
  }
  return runs;
}

}  // namespace mpuevent::tool
