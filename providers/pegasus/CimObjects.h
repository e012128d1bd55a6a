#ifndef MPUEVENT_PROVIDERS_PEGASUS_CIMOBJECTS_H
#define MPUEVENT_PROVIDERS_PEGASUS_CIMOBJECTS_H

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include "EventProperties.h"

namespace mpuevent::provider {

/// The instance; one that has an InstanceID is named by it.
Pegasus::CIMInstance instanceOf(const char* className, const Pegasus::CIMNamespaceName& space,
                                const Properties& properties);

Pegasus::CIMObjectPath pathOf(const char* className, const Pegasus::CIMNamespaceName& space,
                              const Pegasus::String& instanceId);

/// What the key of a path is; empty if it has none of that name, or others.
Pegasus::String instanceIdOf(const Pegasus::CIMObjectPath& path);

}  // namespace mpuevent::provider

#endif
