#include <MPUEvent/AIMMP_Event.h>
#include <MPUEvent/AWR8P_Event.h>
#include <MPUEvent/CACHE18P_Event.h>
#include <MPUEvent/CACHE28P_Event.h>
#include <MPUEvent/DDLMMP_Event.h>
#include <MPUEvent/DRIVEADMP_Event.h>
#include <MPUEvent/ENVIRONMP_Event.h>
#include <MPUEvent/HACCMP_Event.h>
#include <MPUEvent/ICHAR_Event.h>
#include <MPUEvent/IOMGR8P_Event.h>
#include <MPUEvent/ISCSIMP_Event.h>
#include <MPUEvent/ISNSC_Event.h>
#include <MPUEvent/MIP8P_Event.h>
#include <MPUEvent/MPUEvent.h>
#include <MPUEvent/MSMMP_Event.h>
#include <MPUEvent/NETWORK_CONFIGMP_Event.h>
#include <MPUEvent/OB0_Event.h>
#include <MPUEvent/OB1_Event.h>
#include <MPUEvent/SNMPMP_Event.h>
#include <MPUEvent/STARTUPMP_Event.h>
#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

#include "event/RecordView.h"

namespace Pegasus {

namespace {

using Create = Quarn_Event* (*)(EmpEvLogMsg_s* record, int length);

template <class Event>
Quarn_Event* create(EmpEvLogMsg_s* record, int length) {
  return new Event(record, length);
}

template <>
Quarn_Event* create<Quarn_Event>(EmpEvLogMsg_s* record, int length) {
  return new Quarn_Event(record, static_cast<unsigned int>(length));
}

// By source; a source without a decoder class of its own gets the plain event.
constexpr Create decoders[] = {
    create<Quarn_Event>,             // 0, iSCSI 1
    create<Quarn_Event>,             // 1, iSCSI 2
    create<Quarn_Event>,             // 2, SCSI
    create<CACHE18P_Event>,          // 3
    create<CACHE28P_Event>,          // 4
    create<IOMGR8P_Event>,           // 5
    create<Quarn_Event>,             // 6, Dev Mgr
    create<MIP8P_Event>,             // 7
    create<Quarn_Event>,             // 8, PieMan
    create<AWR8P_Event>,             // 9
    create<Quarn_Event>,             // 10, VPI
    create<Quarn_Event>,             // 11, MIP Local: has a name, but no decoder
    create<ICHAR_Event>,             // 12
    create<OB0_Event>,               // 13
    create<OB1_Event>,               // 14
    create<HACCMP_Event>,            // 15
    create<MSMMP_Event>,             // 16
    create<Quarn_Event>,             // 17, RCP
    create<STARTUPMP_Event>,         // 18
    create<DDLMMP_Event>,            // 19
    create<Quarn_Event>,             // 20, Vol Mgr
    create<DRIVEADMP_Event>,         // 21
    create<ISCSIMP_Event>,           // 22, ICS
    create<SYSTEM_CONFIGMP_Event>,   // 23, SCC
    create<NETWORK_CONFIGMP_Event>,  // 24, NCS
    create<AIMMP_Event>,             // 25
    create<ENVIRONMP_Event>,         // 26
    create<Quarn_Event>,             // 27, EMP
    create<SNMPMP_Event>,            // 28
    create<Quarn_Event>,             // 29, SMIS
    create<Quarn_Event>,             // 30, SMIS IND
    create<ISNSC_Event>,             // 31
    create<Quarn_Event>,             // 32: neither name nor decoder
    create<Quarn_Event>,             // 33, ES Adapter
};

}  // namespace

Quarn_Event* MPUEvent::create_Quarn_Event() const {
  if (record_ == nullptr || recordLength_ < mpuevent::Record::headerSize) return nullptr;
  const auto length = static_cast<int>(recordLength_);
  const std::size_t source = mpuevent::Record(record_, length).source();
  const Create create =
      source < std::size(decoders) ? decoders[source] : Pegasus::create<Quarn_Event>;
  return create(record_, length);
}

}  // namespace Pegasus
