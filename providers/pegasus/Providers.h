#ifndef MPUEVENT_PROVIDERS_PEGASUS_PROVIDERS_H
#define MPUEVENT_PROVIDERS_PEGASUS_PROVIDERS_H

#include <Pegasus/Provider/CIMProvider.h>

namespace mpuevent::provider {

/// Of the log that is configured (MPU_EventLog) and its events (MPU_EventLogEntry): instances read
/// from the files for every request and handed out as they are read, which cannot be changed. Who
/// asks for a record that the log holds twice gets the first.
Pegasus::CIMProvider* makeEventLogProvider();

/// Of an MPU_EventAlert for each event that arrives where the settings say, as long as there are
/// subscriptions.
Pegasus::CIMProvider* makeEventAlertProvider();

}  // namespace mpuevent::provider

#endif
