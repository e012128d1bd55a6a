#ifndef MPUEVENT_PROVIDERS_PEGASUS_EVENTLOGPROVIDER_H
#define MPUEVENT_PROVIDERS_PEGASUS_EVENTLOGPROVIDER_H

#include <Pegasus/Provider/CIMInstanceProvider.h>

namespace mpuevent::provider {

/// The log that is configured (MPU_EventLog) and its events (MPU_EventLogEntry), read from the
/// files for every request and handed out as they are read. They cannot be changed.
class EventLogProvider : public Pegasus::CIMInstanceProvider {
 public:
  void initialize(Pegasus::CIMOMHandle& server) override;
  void terminate() override;

  /// A record that the log holds twice is the first one.
  void getInstance(const Pegasus::OperationContext& context, const Pegasus::CIMObjectPath& path,
                   const Pegasus::Boolean includeQualifiers,
                   const Pegasus::Boolean includeClassOrigin,
                   const Pegasus::CIMPropertyList& wanted,
                   Pegasus::InstanceResponseHandler& handler) override;
  void enumerateInstances(const Pegasus::OperationContext& context,
                          const Pegasus::CIMObjectPath& path,
                          const Pegasus::Boolean includeQualifiers,
                          const Pegasus::Boolean includeClassOrigin,
                          const Pegasus::CIMPropertyList& wanted,
                          Pegasus::InstanceResponseHandler& handler) override;
  void enumerateInstanceNames(const Pegasus::OperationContext& context,
                              const Pegasus::CIMObjectPath& path,
                              Pegasus::ObjectPathResponseHandler& handler) override;

  // These throw CIMNotSupportedException.
  void modifyInstance(const Pegasus::OperationContext& context, const Pegasus::CIMObjectPath& path,
                      const Pegasus::CIMInstance& instance,
                      const Pegasus::Boolean includeQualifiers,
                      const Pegasus::CIMPropertyList& wanted,
                      Pegasus::ResponseHandler& handler) override;
  void createInstance(const Pegasus::OperationContext& context, const Pegasus::CIMObjectPath& path,
                      const Pegasus::CIMInstance& instance,
                      Pegasus::ObjectPathResponseHandler& handler) override;
  void deleteInstance(const Pegasus::OperationContext& context, const Pegasus::CIMObjectPath& path,
                      Pegasus::ResponseHandler& handler) override;
};

}  // namespace mpuevent::provider

#endif
