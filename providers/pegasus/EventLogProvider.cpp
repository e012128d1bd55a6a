#include "EventLogProvider.h"

#include <Pegasus/Provider/ProviderException.h>

#include "CimObjects.h"
#include "LogEntries.h"
#include "Settings.h"

namespace mpuevent::provider {

using Pegasus::Boolean;
using Pegasus::CIMInstance;
using Pegasus::CIMName;
using Pegasus::CIMNotSupportedException;
using Pegasus::CIMObjectPath;
using Pegasus::CIMPropertyList;
using Pegasus::InstanceResponseHandler;
using Pegasus::ObjectPathResponseHandler;
using Pegasus::OperationContext;
using Pegasus::ResponseHandler;
using Pegasus::String;

namespace {

constexpr const char* kLog = "MPU_EventLog";
constexpr const char* kEntry = "MPU_EventLogEntry";

bool isLog(const CIMObjectPath& path) {
  const CIMName name = path.getClassName();
  if (!name.equal(CIMName(kLog)) && !name.equal(CIMName(kEntry))) {
    throw CIMNotSupportedException(name.getString());
  }
  return name.equal(CIMName(kLog));
}

// What goes wrong with files and settings, as a server understands it.
template <typename Action>
void answer(ResponseHandler& handler, const Action& action) {
  handler.processing();
  try {
    action();
  } catch (const std::exception& error) {
    throw Pegasus::CIMOperationFailedException(xmlSafeBytes(error.what()));
  }
  handler.complete();
}

CIMInstance logAt(const std::string& path, const CIMObjectPath& asked) {
  const log::Accounting read =
      forEachEntry(path, [](const log::LogUnit&, const EventProperties::Place&) { return true; });
  return instanceOf(kLog, asked.getNameSpace(), logProperties(path, read));
}

}  // namespace

void EventLogProvider::initialize(Pegasus::CIMOMHandle&) {}

void EventLogProvider::terminate() { delete this; }

void EventLogProvider::getInstance(const OperationContext&, const CIMObjectPath& path,
                                   const Boolean, const Boolean, const CIMPropertyList&,
                                   InstanceResponseHandler& handler) {
  answer(handler, [&] {
    const Settings settings = readSettings();
    const String wanted = instanceIdOf(path);
    bool found = false;
    if (isLog(path)) {
      found = wanted == logInstanceId(settings.log);
      if (found) handler.deliver(logAt(settings.log, path));
    } else {
      EventProperties properties(settings.epoch);
      forEachEntry(settings.log, [&](const log::LogUnit& unit, const EventProperties::Place& at) {
        found = wanted == instanceId(unit.record).c_str();
        if (found) {
          handler.deliver(instanceOf(kEntry, path.getNameSpace(), properties.ofEntry(unit, at)));
        }
        return !found;
      });
    }
    if (!found) throw Pegasus::CIMObjectNotFoundException(path.toString());
  });
}

void EventLogProvider::enumerateInstances(const OperationContext&, const CIMObjectPath& path,
                                          const Boolean, const Boolean, const CIMPropertyList&,
                                          InstanceResponseHandler& handler) {
  answer(handler, [&] {
    const Settings settings = readSettings();
    if (isLog(path)) {
      handler.deliver(logAt(settings.log, path));
      return;
    }
    EventProperties properties(settings.epoch);
    forEachEntry(settings.log, [&](const log::LogUnit& unit, const EventProperties::Place& at) {
      handler.deliver(instanceOf(kEntry, path.getNameSpace(), properties.ofEntry(unit, at)));
      return true;
    });
  });
}

void EventLogProvider::enumerateInstanceNames(const OperationContext&, const CIMObjectPath& path,
                                              ObjectPathResponseHandler& handler) {
  answer(handler, [&] {
    const Settings settings = readSettings();
    if (isLog(path)) {
      handler.deliver(pathOf(kLog, path.getNameSpace(), logInstanceId(settings.log)));
      return;
    }
    forEachEntry(settings.log, [&](const log::LogUnit& unit, const EventProperties::Place&) {
      handler.deliver(pathOf(kEntry, path.getNameSpace(), instanceId(unit.record).c_str()));
      return true;
    });
  });
}

void EventLogProvider::modifyInstance(const OperationContext&, const CIMObjectPath&,
                                      const CIMInstance&, const Boolean, const CIMPropertyList&,
                                      ResponseHandler&) {
  throw CIMNotSupportedException("events cannot be changed");
}

void EventLogProvider::createInstance(const OperationContext&, const CIMObjectPath&,
                                      const CIMInstance&, ObjectPathResponseHandler&) {
  throw CIMNotSupportedException("events cannot be made");
}

void EventLogProvider::deleteInstance(const OperationContext&, const CIMObjectPath&,
                                      ResponseHandler&) {
  throw CIMNotSupportedException("events cannot be deleted");
}

}  // namespace mpuevent::provider
