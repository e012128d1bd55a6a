#ifndef MPUEVENT_IOMGR8P_EVENT_H
#define MPUEVENT_IOMGR8P_EVENT_H

#include <MPUEvent/QuarnEvent.h>

namespace Pegasus {

/// The payload of an I/O manager's event, big-endian and of any alignment. The type is never
/// defined: a pointer to it is a pointer to the payload's first byte.
///
/// | offset | width | field                                                       |
/// |--------|-------|-------------------------------------------------------------|
/// | 0      | 4     | event class, 1-32                                           |
/// | 4      | 4     | event number in that class                                  |
/// | 8      | 4     | not shown                                                   |
/// | 12     | 4     | line number in the firmware's source                        |
/// | 16     | 4     | data length: how many bytes of the data area are meaningful |
/// | 20     | ...   | data area: the typed records below, a word or a text        |
struct IOMGR_EVL;

// The records of the data area; never defined either.
struct IOMGR_EVL_LWSEM;
struct IOMGR_EVL_ISURP;
struct IOMGR_EVL_DRP;
struct IOMGR_EVL_VT;
struct IOMGR_EVL_EXT;
struct IOMGR_EVL_MMSG;
struct IOMGR_EVL_DIB;
struct IOMGR_EVL_SGT;
struct IOMGR_EVL_BCD;
struct IOMGR_EVL_RCD;
struct IOMGR_EVL_RBT;
struct IOMGR_EVL_DLM;
struct IOMGR_EVL_MSA_Q_EVENT;
struct IOMGR_EVL_FER;
struct IOMGR_EVL_VBGT;
struct IOMGR_EVL_NDFE;

/// Events of the I/O manager: volume tasks, metadata, error recovery, forced errors and the like.
/// The event class gives the EventID, the event number in its class the Summary and the records
/// whose fields the Body shows.
class MPUEVENT_API IOMGR8P_Event : public QuarnEvent {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI IOMGR8P_Event(EmpEvLogMsg_s* record, int length);
  ~IOMGR8P_Event() override;

  // What the constructor is made of. Each function appends entries to the Body, and all believe
  // what they are pointed to: a record to be as long as its `evStructLength` says, a payload as
  // long as its event class, number and data length demand, a typed record to have its full size.
  // A null pointer to any of these appends nothing. A `place` is returned as it came.

  /// The three numbers that begin every Body, then what the event's class shows. Sets Summary.
  void get_IOMGR8P_event_body(const EmpEvLogMsg_s* record);

  // What one class shows, whatever class the payload names: the event's name as `Request_Type`,
  // and its records. They set Summary: to the name, to the text of an assert, or to nothing if
  // the class does not know the event's number.
  char* get_IOMGR8P_manager_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_rebuild_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_reconfig_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_bbscan_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_xoe_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_error_recovery_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_metadata_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_isurpproc_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_drpproc_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_bg_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_database_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_isr_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_startup_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_sv_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_dlm_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_crc_init_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_parity_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_parity_init_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_parity_error_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_parity_scan_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_parity_rebuild_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_micro_rebuild_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_volume_init_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_mmsg_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_rcp_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_fe_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_carve_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_bg_sys_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_macro_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_evl_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_assert_class_event_body(IOMGR_EVL* payload, char* place);
  char* get_IOMGR8P_math_class_event_body(IOMGR_EVL* payload, char* place);

  // The fields of one record.
  char* get_IOMGR8P_lwsem_event_body(const IOMGR_EVL_LWSEM* record, char* place);
  char* get_IOMGR8P_isurp_event_body(const IOMGR_EVL_ISURP* record, char* place);
  char* get_IOMGR8P_drp_event_body(const IOMGR_EVL_DRP* record, char* place);
  char* get_IOMGR8P_vt_event_body(const IOMGR_EVL_VT* record, char* place);
  char* get_IOMGR8P_ext_event_body(const IOMGR_EVL_EXT* record, char* place);
  char* get_IOMGR8P_mmsg_event_body(const IOMGR_EVL_MMSG* record, char* place);
  char* get_IOMGR8P_dib_event_body(const IOMGR_EVL_DIB* record, char* place);
  char* get_IOMGR8P_sgt_event_body(const IOMGR_EVL_SGT* record, char* place);
  char* get_IOMGR8P_bcd_event_body(const IOMGR_EVL_BCD* record, char* place);
  char* get_IOMGR8P_rcd_event_body(const IOMGR_EVL_RCD* record, char* place);
  char* get_IOMGR8P_rbt_event_body(const IOMGR_EVL_RBT* record, char* place);
  char* get_IOMGR8P_dlm_event_body(const IOMGR_EVL_DLM* record, char* place);
  char* get_IOMGR8P_msa_event_body(const IOMGR_EVL_MSA_Q_EVENT* record, char* place);
  char* get_IOMGR8P_fer_event_body(const IOMGR_EVL_FER* record, char* place);
  char* get_IOMGR8P_vbgt_event_body(const IOMGR_EVL_VBGT* record, char* place);
  char* get_IOMGR8P_ndfe_event_body(const IOMGR_EVL_NDFE* record, char* place);

  /// The fields of a volume in the payload's data area, and of the extents behind it as long as
  /// they begin before the data's end.
  char* dump_volume(const IOMGR_EVL* payload, char* place, const IOMGR_EVL_VT* volume);
  /// The entries of the scatter-gather tables from `first` on that begin before the data's end.
  char* dump_sgt_list(const IOMGR_EVL* payload, char* place, const IOMGR_EVL_SGT* first);
};

}  // namespace Pegasus

#endif
