#ifndef MPUEVENT_XMLSTRING_H
#define MPUEVENT_XMLSTRING_H

#include <MPUEvent/Export.h>

#include <string>

namespace Pegasus {

/// Builds "<key>value</key>" elements; nothing is escaped, nothing stands between elements. An
/// object of the class collects the elements of a body; the builders do not touch it.
class MPUEVENT_API XmlString {
 public:
  XmlString();

  static std::string addStringElement(std::string key, std::string value);
  static std::string addDecimalElement(std::string key, unsigned int value);
  /// "0x" and at least eight lower-case hex digits.
  static std::string addHexElement(std::string key, unsigned int value);
  /// The same for the number high * 2^32 + low.
  static std::string addHexElement(std::string key, unsigned int high, unsigned int low);

  void append(const std::string& elements);
  const std::string& text() const;

 private:
  std::string text_;
};

}  // namespace Pegasus

#endif
