#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <Pegasus/Provider/ProviderException.h>

#include <exception>
#include <string>

#include "CimObjects.h"
#include "LogEntries.h"
#include "Providers.h"
#include "Settings.h"

namespace mpuevent::provider {

namespace {

using namespace Pegasus;

constexpr const char* kLog = "MPU_EventLog";
constexpr const char* kEntry = "MPU_EventLogEntry";

bool isLog(const CIMObjectPath& path) {
  const CIMName& name = path.getClassName();
  if (!name.equal(CIMName(kLog)) && !name.equal(CIMName(kEntry))) {
    throw CIMNotSupportedException(name.getString());
  }
  return name.equal(CIMName(kLog));
}

// What goes wrong with files and settings becomes what a server understands.
template <typename Action>
void answer(ResponseHandler& handler, const Action& action) {
  handler.processing();
  try {
    action(readSettings());
  } catch (const std::exception& error) {
    throw CIMOperationFailedException(xmlSafeBytes(error.what()));
  }
  handler.complete();
}

CIMInstance readLog(const std::string& name, const CIMObjectPath& asked) {
  const auto visit = [](const log::LogUnit&, const EventProperties::Place&) { return true; };
  return instanceOf(kLog, asked.getNameSpace(), logProperties(name, forEachEntry(name, visit)));
}

class EventLogProvider : public CIMInstanceProvider {
 public:
  void initialize(CIMOMHandle&) override {}
  void terminate() override { delete this; }

  void getInstance(const OperationContext&, const CIMObjectPath& path, const Boolean, const Boolean,
                   const CIMPropertyList&, InstanceResponseHandler& handler) override {
    answer(handler, [&](const Settings& settings) {
      const String wanted = instanceIdOf(path);
      bool found = false;
      if (isLog(path)) {
        found = wanted == logInstanceId(settings.log);
        if (found) handler.deliver(readLog(settings.log, path));
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
      if (!found) throw CIMObjectNotFoundException(path.toString());
    });
  }

  void enumerateInstances(const OperationContext&, const CIMObjectPath& path, const Boolean,
                          const Boolean, const CIMPropertyList&,
                          InstanceResponseHandler& handler) override {
    answer(handler, [&](const Settings& settings) {
      if (isLog(path)) return handler.deliver(readLog(settings.log, path));
      EventProperties properties(settings.epoch);
      forEachEntry(settings.log, [&](const log::LogUnit& unit, const EventProperties::Place& at) {
        handler.deliver(instanceOf(kEntry, path.getNameSpace(), properties.ofEntry(unit, at)));
        return true;
      });
    });
  }

  void enumerateInstanceNames(const OperationContext&, const CIMObjectPath& path,
                              ObjectPathResponseHandler& handler) override {
    answer(handler, [&](const Settings& settings) {
      const CIMNamespaceName& space = path.getNameSpace();
      if (isLog(path)) return handler.deliver(pathOf(kLog, space, logInstanceId(settings.log)));
      forEachEntry(settings.log, [&](const log::LogUnit& unit, const EventProperties::Place&) {
        handler.deliver(pathOf(kEntry, space, instanceId(unit.record).c_str()));
        return true;
      });
    });
  }

  void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                      const Boolean, const CIMPropertyList&, ResponseHandler&) override {
    throw CIMNotSupportedException("events cannot be changed");
  }
  void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                      ObjectPathResponseHandler&) override {
    throw CIMNotSupportedException("events cannot be made");
  }
  void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {
    throw CIMNotSupportedException("events cannot be deleted");
  }
};

}  // namespace

CIMProvider* makeEventLogProvider() { return new EventLogProvider; }

}  // namespace mpuevent::provider
