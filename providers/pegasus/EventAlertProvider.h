#ifndef MPUEVENT_PROVIDERS_PEGASUS_EVENTALERTPROVIDER_H
#define MPUEVENT_PROVIDERS_PEGASUS_EVENTALERTPROVIDER_H

#include <Pegasus/Provider/CIMIndicationProvider.h>

#include <memory>

#include "EventFeed.h"

namespace mpuevent::provider {

/// An MPU_EventAlert for each message that arrives where the settings say, as long as there are
/// subscriptions.
class EventAlertProvider : public Pegasus::CIMIndicationProvider {
 public:
  void initialize(Pegasus::CIMOMHandle& server) override;
  void terminate() override;

  void enableIndications(Pegasus::IndicationResponseHandler& handler) override;
  /// Returns when nothing more is delivered.
  void disableIndications() override;

  // The server alone knows who gets which alert.
  void createSubscription(const Pegasus::OperationContext& context,
                          const Pegasus::CIMObjectPath& subscription,
                          const Pegasus::Array<Pegasus::CIMObjectPath>& classes,
                          const Pegasus::CIMPropertyList& wanted,
                          const Pegasus::Uint16 repeatNotificationPolicy) override;
  void modifySubscription(const Pegasus::OperationContext& context,
                          const Pegasus::CIMObjectPath& subscription,
                          const Pegasus::Array<Pegasus::CIMObjectPath>& classes,
                          const Pegasus::CIMPropertyList& wanted,
                          const Pegasus::Uint16 repeatNotificationPolicy) override;
  void deleteSubscription(const Pegasus::OperationContext& context,
                          const Pegasus::CIMObjectPath& subscription,
                          const Pegasus::Array<Pegasus::CIMObjectPath>& classes) override;

 private:
  std::unique_ptr<EventFeed> feed_;
};

}  // namespace mpuevent::provider

#endif
