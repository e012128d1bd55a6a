#ifndef MPUEVENT_SUPPORT_GOLDENROWS_H
#define MPUEVENT_SUPPORT_GOLDENROWS_H

#include <string>
#include <string_view>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace mpuevent::support {

/// Lines that are held against a text that somebody has read, tests/rows/NAME.txt: one for each
/// row of a module's tables. Lines that tell the same, one behind the other, become one.
class GoldenRows {
 public:
  explicit GoldenRows(std::string name) : name_(std::move(name)) {}

  void add(const std::string& label, std::string_view told);
  /// Event id, Summary, and what `show` makes of the Body.
  template <class Show>
  void add(const std::string& label, const RecordBuilder& record, Show show) {
    const auto [id, summary, body] = textsOf(*decode(record.str()));
    add(label, id + " | " + summary + " | " + show(body));
  }
  void add(const std::string& label, const RecordBuilder& record) {
    add(label, record, [](const std::string& body) { return body; });
  }

  /// A failure that names the first line that differs; with MPUEVENT_UPDATE_ROWS set in the
  /// environment the text becomes what was added.
  void check() const;

 private:
  std::string name_;
  std::string text_;
  std::string last_;
};

/// Bytes with a letter in each, so that the case of their digits shows; 156 differ.
Payload letters(std::size_t size);

}  // namespace mpuevent::support

#endif
