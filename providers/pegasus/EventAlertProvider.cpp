#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <syslog.h>

#include <memory>
#include <stdexcept>

#include "CimObjects.h"
#include "EventFeed.h"
#include "Providers.h"

namespace mpuevent::provider {

namespace {

using namespace Pegasus;

void deliver(IndicationResponseHandler& handler, const Properties& properties) {
  try {
    // Servers that can wait until an alert has been sent on do so, up to this time.
    constexpr Uint32 kTenSeconds = 10000;
    OperationContext context;
    context.insert(TimeoutContainer(kTenSeconds));
    CIMInstance alert = instanceOf("MPU_EventAlert", CIMNamespaceName("root/cimv2"), properties);
    alert.addProperty(CIMProperty(CIMName("IndicationTime"), CIMDateTime::getCurrentDateTime()));
    handler.deliver(context, CIMIndication(alert));
  } catch (const Exception& error) {
    throw std::runtime_error(static_cast<const char*>(error.getMessage().getCString()));
  }
}

class EventAlertProvider : public CIMIndicationProvider {
 public:
  void initialize(CIMOMHandle&) override {}
  void terminate() override { delete this; }

  void enableIndications(IndicationResponseHandler& handler) override {
    try {
      const Settings settings = readSettings();
      handler.processing();
      const auto properties = std::make_shared<EventProperties>(settings.epoch);
      feed_ =
          std::make_unique<EventFeed>(settings, [&handler, properties](const log::LogUnit& unit) {
            deliver(handler, properties->ofAlert(unit));
          });
    } catch (const std::exception& error) {
      ::syslog(LOG_ERR, "mpuevent: no alerts: %s", error.what());
    }
  }
  /// Returns when nothing more is delivered.
  void disableIndications() override { feed_.reset(); }

  // The server alone knows who gets which alert.
  void createSubscription(const OperationContext&, const CIMObjectPath&,
                          const Array<CIMObjectPath>&, const CIMPropertyList&,
                          const Uint16) override {}
  void modifySubscription(const OperationContext&, const CIMObjectPath&,
                          const Array<CIMObjectPath>&, const CIMPropertyList&,
                          const Uint16) override {}
  void deleteSubscription(const OperationContext&, const CIMObjectPath&,
                          const Array<CIMObjectPath>&) override {}

 private:
  std::unique_ptr<EventFeed> feed_;
};

}  // namespace

CIMProvider* makeEventAlertProvider() { return new EventAlertProvider; }

}  // namespace mpuevent::provider
