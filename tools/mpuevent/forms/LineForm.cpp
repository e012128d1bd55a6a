#include "EventForm.h"
#include "Utf8.h"

namespace mpuevent::tool {

namespace {

class LineForm : public EventForm {
 public:
  explicit LineForm(bool exact) : exact_(exact) {}

  void write(const DecodedEvent& decoded, TextBuffer& to) override {
    const PaddedView line = utf8_.assign(decoded.event.str());
    if (exact_) {
      to += line;
    } else {
      appendVisible(to, line);
    }
    to += '\n';
  }

 private:
  const bool exact_;
  Utf8Text utf8_;
};

}  // namespace

std::unique_ptr<EventForm> makeLineForm(bool exact) { return std::make_unique<LineForm>(exact); }

}  // namespace mpuevent::tool
