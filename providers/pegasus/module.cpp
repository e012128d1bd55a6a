#include <Pegasus/Common/String.h>

#include "Providers.h"

/// What the server asks for the providers of this module, by the names in mof/MPU_Registration.mof.
/// It owns what it gets; null for a name that is none of them.
extern "C" PEGASUS_EXPORT Pegasus::CIMProvider* PegasusCreateProvider(const Pegasus::String& name) {
  using namespace mpuevent::provider;
  if (Pegasus::String::equalNoCase(name, "MPU_EventLogProvider")) return makeEventLogProvider();
  if (Pegasus::String::equalNoCase(name, "MPU_EventAlertProvider")) return makeEventAlertProvider();
  return nullptr;
}
