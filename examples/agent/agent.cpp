// What an agent does with the event messages that it receives. They come from standard input here,
// back to back as in a log: 64 bytes of CMAP header, then a record. C++11, and nothing but what is
// installed.
//
//   agent < array.cmap
#include <MPUEvent/FieldRecorder.h>
#include <MPUEvent/MPUEvent.h>
#include <MPUEvent/Version.h>

#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#if MPUEVENT_VERSION_NUMBER < 200
#error "this takes libMPUEvent 0.2"
#endif

namespace {

using Pegasus::CMAPMessageHeader;
using Pegasus::Quarn_Event;

// Firmware texts may hold anything: what is written to a terminal goes without control characters.
std::string text(const Pegasus::String& string) {
  std::string result(string.getCString());
  for (char& c : result) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
  }
  return result;
}

// The event and the elements of its Body: `fields` has recorded them as they were written.
void show(Quarn_Event& event, const Pegasus::FieldRecorder& fields) {
  // The word of the event type; the const overload gives the number.
  const Pegasus::String type = event.getEventType();
  std::cout << event.getTimestamp() << ' ' << text(type) << ' ' << text(event.getSource()) << ' '
            << text(event.getEventID()) << ": " << text(event.getSummary()) << '\n';
  const Pegasus::String body = event.getBody();
  for (const Pegasus::RecordedField& field : fields) {
    std::cout << std::string(4 * (field.depth + 1), ' ')
              << text(body.subString(field.keyStart, field.keyLength));
    if (!field.isGroup) {
      std::cout << " = " << text(body.subString(field.valueStart, field.valueLength));
    }
    std::cout << '\n';
  }
}

// A received message: `body` holds what came behind the header. False if it is no event.
bool decode(const CMAPMessageHeader& header, const std::vector<char>& body) {
  try {
    Pegasus::Quarn_imemstream stream(body.data(), static_cast<int>(body.size()));
    // Copies the body: neither header nor stream is needed any more.
    const Pegasus::MPUEvent envelope(header, stream);
    const Pegasus::FieldRecorder fields;
    const std::unique_ptr<Quarn_Event> event(envelope.create_Quarn_Event());
    if (!event) {
      std::cerr << "agent: a message too short for an event\n";
      return false;
    }
    show(*event, fields);
    return true;
  } catch (const Pegasus::CMAPOperationFailedException& failure) {
    // Fewer bytes came than the header says.
    std::cerr << "agent: " << text(failure.getMessage()) << '\n';
    return false;
  }
}

}  // namespace

int main() {
  // The program may run with another library than it was compiled for.
  if (std::strcmp(mpuevent_version(), MPUEVENT_VERSION) != 0) {
    std::cerr << "agent: compiled for " MPUEVENT_VERSION ", runs with " << mpuevent_version()
              << '\n';
  }
  bool allDecoded = true;
  char wire[CMAPMessageHeader::wireSize];
  while (std::cin.read(wire, sizeof wire)) {
    unsigned char bytes[sizeof wire];
    std::memcpy(bytes, wire, sizeof wire);
    const CMAPMessageHeader header(bytes);
    const unsigned length = header.getTotalLength();
    std::vector<char> body(length < sizeof wire ? 0 : length - sizeof wire);
    std::cin.read(body.data(), static_cast<std::streamsize>(body.size()));
    body.resize(static_cast<std::size_t>(std::cin.gcount()));
    allDecoded = decode(header, body) && allDecoded;
  }
  return allDecoded ? 0 : 1;
}
