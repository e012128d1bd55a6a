#include "EventAlertProvider.h"

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/OperationContext.h>
#include <syslog.h>

#include <stdexcept>
#include <utility>

#include "CimObjects.h"
#include "EventProperties.h"
#include "Settings.h"

namespace mpuevent::provider {

using Pegasus::Array;
using Pegasus::CIMInstance;
using Pegasus::CIMObjectPath;
using Pegasus::CIMPropertyList;
using Pegasus::IndicationResponseHandler;
using Pegasus::OperationContext;
using Pegasus::Uint16;

namespace {

const Pegasus::CIMNamespaceName& space() {
  static const Pegasus::CIMNamespaceName name("root/cimv2");
  return name;
}

}  // namespace

void EventAlertProvider::initialize(Pegasus::CIMOMHandle&) {}

void EventAlertProvider::terminate() { delete this; }

void EventAlertProvider::enableIndications(IndicationResponseHandler& handler) {
  Settings settings;
  try {
    settings = readSettings();
  } catch (const std::exception& error) {
    ::syslog(LOG_ERR, "mpuevent: no alerts: %s", error.what());
    return;
  }
  handler.processing();
  // Servers that can wait until an alert has been sent on do so, up to this time.
  OperationContext context;
  constexpr Pegasus::Uint32 kTenSeconds = 10000;
  context.insert(Pegasus::TimeoutContainer(kTenSeconds));
  auto properties = std::make_shared<EventProperties>(settings.epoch);
  const auto deliver = [&handler, context, properties](const log::LogUnit& unit) {
    try {
      CIMInstance alert = instanceOf("MPU_EventAlert", space(), properties->ofAlert(unit));
      alert.addProperty(Pegasus::CIMProperty(Pegasus::CIMName("IndicationTime"),
                                             Pegasus::CIMDateTime::getCurrentDateTime()));
      handler.deliver(context, Pegasus::CIMIndication(alert));
    } catch (const Pegasus::Exception& error) {
      throw std::runtime_error(static_cast<const char*>(error.getMessage().getCString()));
    }
  };
  feed_ = std::make_unique<EventFeed>(std::move(settings), deliver);
}

void EventAlertProvider::disableIndications() { feed_.reset(); }

void EventAlertProvider::createSubscription(const OperationContext&, const CIMObjectPath&,
                                            const Array<CIMObjectPath>&, const CIMPropertyList&,
                                            const Uint16) {}

void EventAlertProvider::modifySubscription(const OperationContext&, const CIMObjectPath&,
                                            const Array<CIMObjectPath>&, const CIMPropertyList&,
                                            const Uint16) {}

void EventAlertProvider::deleteSubscription(const OperationContext&, const CIMObjectPath&,
                                            const Array<CIMObjectPath>&) {}

}  // namespace mpuevent::provider
