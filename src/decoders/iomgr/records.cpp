#include "decoders/iomgr/records.h"

#include <algorithm>
#include <string_view>

#include "event/Lists.h"
#include "event/Tables.h"

namespace mpuevent::iomgr {

namespace {

using enum Width;
using enum Format;

constexpr Field lwsemFields[] = {
    {"lwsem_valid_bit", 0, u32, hexUpper8},
    {"lwsem_value",     4, u32, hexUpper8},
};

constexpr Field isurpFields[] = {
    {"isurp_opcode",                1,  u8,              hexUpper8},
    {"isurp_current_state",         2,  u8,              hexUpper8},
    {"isurp_sender",                3,  u8,              hexUpper8},
    {"isurp_scsi_flags",            4,  u32,             hexUpper8},
    {"isurp_cache_mgr_flags",       8,  u32,             hexUpper8},
    {"isurp_io_mgr_flags",          12, u32,             hexUpper8},
    {"isurp_starting_vlbn",         16, wordPairSwapped, hexUpper8},
    {"isurp_requested_block_count", 24, u32,             hexUpper8},
};

constexpr Field drpFields[] = {
    {"Drive_Number",        28, u32,             dec      },
    {"DRP_Command",         34, u8,              hexUpper8},
    {"DRP_PLBN",            4,  wordPairSwapped, hexUpper8},
    {"DRP_Xfer_Count",      12, u32,             hexUpper8},
    {"DRP_Error_PLBN",      16, wordPairSwapped, hexUpper8},
    {"DRP_Residual_Count",  24, u32,             hexUpper8},
    {"DRP_Status",          32, u8,              hexUpper8},
    {"DRP_Status_Flags",    33, u8,              hexUpper8},
    {"DRP_Command_Flags",   35, u8,              hexUpper8},
    {"DRP_Type",            1,  u8,              hexUpper8},
    {"DRP_Diskline_Bitmap", 36, u32,             hexUpper8},
};

constexpr Field vtFields[] = {
    {"vt_common_flags",                 0,   u32,      hexUpper8},
    {"vt_common_organization",          4,   u8,       hexUpper8},
    {"vt_common_stripe_width",          6,   u8,       hexUpper8},
    {"vt_common_mirror_count",          7,   u8,       hexUpper8},
    {"vt_common_volume_number",         8,   u32,      hexUpper8},
    {"vt_common_volume_capacity",       16,  u64,      udec     },
    {"vt_common_volume_highwater_mark", 24,  u64,      udec     },
    {"vt_common_volume_state",          44,  u32,      hexUpper8},
    {"iomgr_vt_flags",                  240, u32,      hexUpper8},
    {"iomgr_vt_",                       240, u32,      hexUpper8}, // the same word
    {"iomgr_vt_extent_count",           246, u16,      hexUpper8},
    {"iomgr_vt_num_extent_descriptors", 260, u32,      hexUpper8},
    {"iomgr_vt_volume_db_update_count", 252, wordPair, hexUpper8},
    {"iomgr_vt_chunk_size_shift_bits",  248, u32,      hexUpper8},
};

constexpr Field extFields[] = {
    {"ext_men",                    1,  u8,       dec      },
    {"ext_status",                 4,  u16,      hexUpper8},
    {"ext_flag",                   6,  u16,      hexUpper8},
    {"ext_mlbn",                   8,  wordPair, hexUpper8},
    {"ext_initial_plbn",           16, wordPair, hexUpper8},
    {"ext_size",                   24, wordPair, hexUpper8},
    {"ext_vlbn_offset",            32, wordPair, hexUpper8},
    {"ext_s_chunk",                40, wordPair, hexUpper8},
    {"ext_e_chunk",                48, wordPair, hexUpper8},
    {"ext_rebuild_highwater_mark", 56, wordPair, hexUpper8},
    {"ext_durable_name",           64, wordQuad, hexUpper8},
};

constexpr Field mmsgFields[] = {
    {"mmsg_length",       0,  u16, hexUpper8},
    {"mmsg_requestor",    2,  u8,  hexUpper8},
    {"mmsg_dest_ep",      3,  u8,  hexUpper8},
    {"mmsg_return_code",  8,  u32, hexUpper8},
    {"mmsg_general_use1", 12, u32, hexUpper8},
    {"mmsg_general_use2", 16, u32, hexUpper8},
    {"mmsg_opcode",       4,  u32, hexUpper8},
};

constexpr Field dibFields[] = {
    {"Device",              8,   u16,      dec      },
    {"State",               10,  u16,      dec      },
    {"Max_PLBN",            0,   wordPair, hexUpper8},
    {"VM_Flags",            48,  u32,      hexUpper8},
    {"This_Serial_Number",  52,  u32,      hexUpper8},
    {"Other_Serial_Number", 56,  u32,      hexUpper8},
    {"MPU_Length",          60,  u32,      dec      },
    {"Member_Length",       64,  u32,      dec      },
    {"Member_Count",        68,  u32,      dec      },
    {"Metadata_Version",    72,  u32,      dec      },
    {"Durable_Name",        476, wordQuad, hexUpper8},
};

constexpr Field regionFields[] = {
    {"Region_Type",               0,  u16, hexUpper8},
    {"Region_Flags",              2,  u16, hexUpper8},
    {"Region_Offset",             4,  u32, hexUpper8},
    {"Region_Label",              8,  u32, hexUpper8},
    {"Region_Size",               12, u32, hexUpper8},
    {"Region_r5K_private_Length", 16, u32, hexUpper8},
};

constexpr Field sgtEntryFields[] = {
    {"sgt_address",    0, u32, hexUpper8},
    {"sgt_byte_count", 4, u32, hexUpper8},
};

constexpr Field bcdFields[] = {
    {"bcd_btsn",         40, u32,             dec      },
    {"bcd_cache_index",  0,  u8,              dec      },
    {"bcd_index",        2,  u16,             dec      },
    {"bcd_highwater",    4,  wordPairSwapped, hexUpper8},
    {"bcd_men",          12, u32,             dec      },
    {"bcd_mlbn",         16, wordPairSwapped, hexUpper8},
    {"bcd_flags",        44, u32,             hexUpper8},
    {"bcd_opcode",       48, u16,             hexUpper8},
    {"bcd_state",        50, u16,             hexUpper8},
    {"bcd_durable_name", 24, wordQuad,        hexUpper8},
};

constexpr Field rcdFields[] = {
    {"rcd_cache_index",  0,  u8,              dec      },
    {"rcd_index",        36, u16,             dec      },
    {"rcd_btsn",         28, u32,             dec      },
    {"rcd_len",          2,  u16,             hexUpper8},
    {"rcd_vlbn",         4,  wordPairSwapped, hexUpper8},
    {"rcd_flags",        32, u32,             hexUpper8},
    {"rcd_state",        38, u16,             hexUpper8},
    {"rcd_durable_name", 12, wordQuad,        hexUpper8},
};

constexpr Field rbtFields[] = {
    {"rbt_btsn",         28, u32,             dec      },
    {"rbt_volume_index", 2,  u16,             dec      },
    {"rbt_task_opcode",  0,  u16,             hexUpper8},
    {"rbt_flags",        4,  u32,             hexUpper8},
    {"rbt_highwater",    8,  wordPairSwapped, hexUpper8},
    {"rbt_men",          16, u32,             dec      },
    {"rbt_mlbn",         20, wordPairSwapped, hexUpper8},
};

constexpr Field dlmFields[] = {
    {"dlm_flags",       1,  u8,  hexUpper8},
    {"dlm_cache_index", 2,  u8,  hexUpper8},
    {"dlm_index",       4,  u32, hexUpper8},
    {"dlm_ref_index",   8,  u32, hexUpper8},
    {"dlm_fe_device",   12, u32, hexUpper8},
};

constexpr Field dlmEntryFields[] = {
    {"dlm_dlme_vlbn_h",         0,  wordPairSwapped, hexUpper8},
    {"dlm_dlme_unique_id",      8,  wordPair,        hexUpper8},
    {"dlm_dlme_plbn",           16, wordPairSwapped, hexUpper8},
    {"dlm_dlme_fe_data",        24, u32,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 28, u16,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 30, u16,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 32, u16,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 34, u16,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 36, u16,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 38, u16,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 40, u16,             hexUpper8},
    {"dlm_dlme_parity_fe_data", 42, u16,             hexUpper8},
};

constexpr Field msaFields[] = {
    {"msa_full_hi_level",        0,  u16, hexUpper8},
    {"msa_full_lo_level",        2,  u16, hexUpper8},
    {"msa_read_pointer",         4,  u16, hexUpper8},
    {"msa_write_pointer",        6,  u16, hexUpper8},
    {"msa_count",                8,  u16, hexUpper8},
    {"msa_not_mt_signal",        10, u16, hexUpper8},
    {"msa_base_address_of_data", 12, u32, hexUpper8},
    {"msa_hysteresis",           16, u8,  hexUpper8},
    {"msa_mode",                 17, u8,  hexUpper8},
    {"msa_size",                 18, u16, hexUpper8},
    {"msa_hi_mark_signal",       20, u16, hexUpper8},
    {"msa_lo_mark_signal",       22, u16, hexUpper8},
    {"msa_over_flow_signal",     24, u16, hexUpper8},
    {"msa_under_flow_signal",    26, u16, hexUpper8},
    {"msa_write_check_point",    28, u32, hexUpper8},
};

constexpr Field ferFields[] = {
    {"fer_volume_index", 0,  u16,             hexUpper8},
    {"fer_flags",        2,  u16,             hexUpper8},
    {"fer_device_id",    4,  u16,             hexUpper8},
    {"fer_vlbn",         8,  wordPairSwapped, hexUpper8},
    {"fer_plbn",         16, wordPairSwapped, hexUpper8},
};

constexpr Field vbgtFields[] = {
    {"BTSN",          0,  u32,      dec      },
    {"Volume_Number", 4,  u32,      dec      },
    {"Task_Priority", 8,  u32,      dec      },
    {"Task_Type",     12, u32,      hexUpper8},
    {"Task_Status",   16, u32,      hexUpper8},
    {"Task_Flags",    20, u32,      hexUpper8},
    {"HWM",           24, wordPair, hexUpper8},
};

constexpr Field ndfeFields[] = {
    {"ndfe_flags",     0, u16,             hexUpper8},
    {"ndfe_device_id", 2, u16,             hexUpper8},
    {"ndfe_plbn",      4, wordPairSwapped, hexUpper8},
};

// The blank and the equals sign of the key go into both tags as they are.
constexpr Field intStatField[] = {
    {"INT_STAT =", 0, u32, hexUpper8}
};
constexpr Field qmirField[] = {
    {"QMIR", 0, u32, hexUpper8}
};
constexpr Field interruptField[] = {
    {"Interrupt", 0, u32, hexUpper8}
};
constexpr Field messageField[] = {
    {"Message", 0, u32, hexUpper8}
};
constexpr Field volumeNumberField[] = {
    {"Volume_Number", 0, u32, hexUpper8}
};

constexpr Layout region = {20, packed<regionFields>};
constexpr List regions = {76, region.size, 20};

/// The regions of a device information block, up to the first without a type.
void writeRegions(BodyWriter& body, RecordView dib) {
  forEachEntry(dib, regions, [&](RecordView entry, std::uint32_t) {
    if (entry.u16(0) == 0) return false;
    writeFields(body, entry, region.rows);
    return true;
  });
}

constexpr Layout sgtEntry = {8, packed<sgtEntryFields>};
constexpr List sgtEntries = {0, sgtEntry.size, 8};

/// The entries of a scatter-gather table, up to the first without an address.
void writeSgtEntries(BodyWriter& body, RecordView sgt) {
  forEachEntry(sgt, sgtEntries, [&](RecordView entry, std::uint32_t) {
    if (entry.u32(0) == 0) return false;
    writeFields(body, entry, sgtEntry.rows);
    return true;
  });
}

constexpr Layout dlmEntry = {44, packed<dlmEntryFields>};

void writeDlmEntries(BodyWriter& body, RecordView dlm) { writeList(body, dlm, 16, 4, dlmEntry); }

/// Writes what a record shows by itself. `record` holds as much of it as there is.
void writeOwn(BodyWriter& body, RecordView record, const RecordLayout& layout) {
  writeFields(body, record, layout.rows);
  if (layout.writeLists != nullptr) layout.writeLists(body, record);
}

/// Writes records of one layout from `at` on: those that begin among the meaningful bytes that are
/// held. The last may reach beyond their end.
void writeRun(BodyWriter& body, const DataArea& data, std::size_t at, const RecordLayout& layout) {
  const std::size_t end = std::min<std::size_t>(data.length, data.size());
  if (at >= end) return;
  const std::size_t count = (end - at - 1) / layout.size + 1;
  forEachEntry(data.from(0), {at, layout.size, count}, [&](RecordView record, std::uint32_t) {
    writeOwn(body, record, layout);
    return true;
  });
}

struct RecordRow {
  RecordKind kind;
  RecordLayout layout;
};

using enum RecordKind;

constexpr RecordRow recordRows[] = {
    {nothing,      {Layout(0)}                                },
    {lwsem,        {{8, packed<lwsemFields>}}                 },
    {isurp,        {{28, packed<isurpFields>}}                },
    {drp,          {{40, packed<drpFields>}}                  },
    {vt,           {{264, packed<vtFields>}}                  },
    {ext,          {{80, packed<extFields>}}                  },
    {mmsg,         {{20, packed<mmsgFields>}}                 },
    {dib,          {{492, packed<dibFields>}, writeRegions}   },
    {sgt,          {Layout(64), writeSgtEntries}              },
    {bcd,          {{52, packed<bcdFields>}}                  },
    {rcd,          {{40, packed<rcdFields>}}                  },
    {rbt,          {{32, packed<rbtFields>}}                  },
    {dlm,          {{192, packed<dlmFields>}, writeDlmEntries}},
    {msa,          {{32, packed<msaFields>}}                  },
    {fer,          {{24, packed<ferFields>}}                  },
    {vbgt,         {{32, packed<vbgtFields>}}                 },
    {ndfe,         {{12, packed<ndfeFields>}}                 },
    {volume,       {{264, packed<vtFields>}, nullptr, ext}    },
    {sgtList,      {Layout(0), nullptr, sgt}                  },
    {interrupt,    {{4, packed<interruptField>}}              },
    {message,      {{4, packed<messageField>}}                },
    {volumeNumber, {{4, packed<volumeNumberField>}}           },
    {qmir,         {{4, packed<qmirField>}}                   },
    {intStat,      {{4, packed<intStatField>}}                },
};
static_assert(standInOrder(recordRows, &RecordRow::kind));

}  // namespace

const RecordLayout& layoutOf(RecordKind kind) {
  return recordRows[static_cast<std::size_t>(kind)].layout;
}

void writeRecord(BodyWriter& body, const DataArea& data, std::size_t at,
                 const RecordLayout& layout) {
  writeOwn(body, data.from(at, layout.size), layout);
  if (layout.run == RecordKind::nothing) return;
  writeRun(body, data, at + layout.size, layoutOf(layout.run));
}

}  // namespace mpuevent::iomgr
