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

/// Makes an alert of an event and gives it to the server.
class Sender {
 public:
  Sender(IndicationResponseHandler& handler, const Settings& settings)
      : handler_(handler), properties_(settings.epoch) {
    // Servers that can wait until an alert has been sent on do so, up to this time.
    constexpr Uint32 kTenSeconds = 10000;
    context_.insert(TimeoutContainer(kTenSeconds));
  }

  void send(const log::LogUnit& unit) {
    try {
      CIMInstance alert = instanceOf("MPU_EventAlert", space_, properties_.ofAlert(unit));
      alert.addProperty(CIMProperty(CIMName("IndicationTime"), CIMDateTime::getCurrentDateTime()));
      handler_.deliver(context_, CIMIndication(alert));
    } catch (const Exception& error) {
      throw std::runtime_error(static_cast<const char*>(error.getMessage().getCString()));
    }
  }

 private:
  IndicationResponseHandler& handler_;
  EventProperties properties_;
  OperationContext context_;
  const CIMNamespaceName space_ = CIMNamespaceName("root/cimv2");
};

class EventAlertProvider : public CIMIndicationProvider {
 public:
  void initialize(CIMOMHandle&) override {}
  void terminate() override { delete this; }

  void enableIndications(IndicationResponseHandler& handler) override {
    try {
      const Settings settings = readSettings();
      handler.processing();
      const auto sender = std::make_shared<Sender>(handler, settings);
      feed_ = std::make_unique<EventFeed>(
          settings, [sender](const log::LogUnit& unit) { sender->send(unit); });
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
