#include "CimObjects.h"

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>

namespace mpuevent::provider {

using namespace Pegasus;

namespace {

constexpr const char* kKey = "InstanceID";

struct ToCim {
  template <typename Value>  // a number or a text
  CIMValue operator()(const Value& value) const {
    return CIMValue(value);
  }
  CIMValue operator()(const CimTime& time) const {
    return CIMValue(CIMDateTime(time.text.c_str()));
  }
  CIMValue operator()(const std::vector<String>& texts) const {
    Array<String> all;
    for (const String& text : texts) all.append(text);
    return CIMValue(all);
  }
};

}  // namespace

CIMObjectPath pathOf(const char* className, const CIMNamespaceName& space,
                     const String& instanceId) {
  Array<CIMKeyBinding> keys;
  keys.append(CIMKeyBinding(CIMName(kKey), instanceId, CIMKeyBinding::STRING));
  return {String::EMPTY, space, CIMName(className), keys};
}

String instanceIdOf(const CIMObjectPath& path) {
  const Array<CIMKeyBinding>& keys = path.getKeyBindings();
  return keys.size() == 1 && keys[0].getName().equal(CIMName(kKey)) ? keys[0].getValue()
                                                                    : String::EMPTY;
}

CIMInstance instanceOf(const char* className, const CIMNamespaceName& space,
                       const Properties& properties) {
  CIMInstance instance{CIMName(className)};
  instance.setPath(CIMObjectPath(String::EMPTY, space, CIMName(className)));
  for (const auto& [name, value] : properties) {
    instance.addProperty(CIMProperty(CIMName(name.c_str()), std::visit(ToCim(), value)));
    if (name == kKey) instance.setPath(pathOf(className, space, std::get<String>(value)));
  }
  return instance;
}

}  // namespace mpuevent::provider
