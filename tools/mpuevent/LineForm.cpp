#include "EventForm.h"
#include "Utf8.h"

namespace mpuevent::tool {

namespace {

class LineForm : public EventForm {
 public:
  void write(const DecodedEvent& decoded, std::string& to) override {
    to += utf8_.assign(decoded.event.str());
    to += '\n';
  }

 private:
  Utf8Text utf8_;
};

}  // namespace

std::unique_ptr<EventForm> makeLineForm() { return std::make_unique<LineForm>(); }

}  // namespace mpuevent::tool
