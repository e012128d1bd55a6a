#ifndef DECODERS_CACHE_LAYOUTS_H
#define DECODERS_CACHE_LAYOUTS_H

#include <span>

#include "event/Fields.h"

/// What the cache managers log with a bugcheck. All offsets are from the payload's start.
namespace mpuevent::cache {

using enum Width;
using enum Format;

/// Tables of elements, written one after the other.
struct Elements {
  std::span<const Field> first = {};
  std::span<const Field> second = {};
};

// Structures.

inline constexpr Field dumpIsurp[] = {
    {"ISURP_address",       0,  u32,            hex      },
    {"type_opcode_state",   4,  u32,            hex      },
    {"scsi_flags",          8,  u32,            hex      },
    {"cache_manager_flags", 12, u32,            hex      },
    {"io_manager_flags",    16, u32,            hex      },
    {"iscsi_flags",         20, u32,            hex      },
    {"volume_number",       24, u32,            hex      },
    {"VLBN",                28, pairHighSecond, hex8Lower},
    {"block_count",         36, u32,            hex      },
};

inline constexpr Field dumpMmsg[] = {
    {"MMSG_address",     0,  u32, hex},
    {"request_protocol", 4,  u32, hex},
    {"request_type",     8,  u32, hex},
    {"general_use_1",    12, u32, hex},
    {"general_use_2",    16, u32, hex},
};

inline constexpr Field dumpSemaphore[] = {
    {"valid_field", 0, u32, hex},
    {"value_field", 4, u32, hex},
};

inline constexpr Field dumpCacheVt[] = {
    {"volume_number",             0,  u32,            hex      },
    {"cache_VT_flags",            4,  u32,            hex      },
    {"reconfiguration_highwater", 8,  pairHighSecond, hex8Lower},
    {"old_chunkstripe_size",      16, u32,            hex      },
    {"new_chunkstripe_size",      20, u32,            hex      },
    {"capacity",                  24, pairHighSecond, hex8Lower},
};

inline constexpr Field dumpClhVt[] = {
    {"CLH_address",               0,  u32,            hex      },
    {"volume_number",             4,  u32,            hex      },
    {"VLBN",                      8,  pairHighSecond, hex8Lower},
    {"CLH_flags",                 16, u32,            hex      },
    {"cache_VT_flags",            20, u32,            hex      },
    {"reconfiguration_highwater", 24, pairHighSecond, hex8Lower},
    {"old_chunkstripe_size",      32, u32,            hex      },
    {"new_chunkstripe_size",      36, u32,            hex      },
};

inline constexpr Field dumpClh[] = {
    {"CLH_address",               0,  u32,            hex      },
    {"volume_number",             4,  u32,            hex      },
    {"VLBN",                      8,  pairHighSecond, hex8Lower},
    {"CLH_flags",                 16, u32,            hex      },
    {"valid_bitmap",              20, pairHighSecond, hex8Lower},
    {"dirty_bitmap",              28, pairHighSecond, hex8Lower},
    {"activity_count",            36, u32,            hex      },
    {"host_write_activity_count", 40, u32,            hex      },
    {"disk_read_bitmap",          44, pairHighSecond, hex8Lower},
    {"host_write_bitmap",         52, pairHighSecond, hex8Lower},
    {"destage_bitmap",            60, pairHighSecond, hex8Lower},
};

inline constexpr Field isurpListheads[] = {
    {"main_listhead",         40,  pairHighFirst, hex8Lower},
    {"sgt_listhead",          48,  pairHighFirst, hex8Lower},
    {"cache_listhead",        56,  pairHighFirst, hex8Lower},
    {"IO_listhead",           64,  pairHighFirst, hex8Lower},
    {"iSCSI_listhead",        72,  pairHighFirst, hex8Lower},
    {"SCSI_listhead",         80,  pairHighFirst, hex8Lower},
    {"VT_listhead",           88,  pairHighFirst, hex8Lower},
    {"DRP_listhead",          96,  pairHighFirst, hex8Lower},
    {"error_DRP_listhead",    104, pairHighFirst, hex8Lower},
    {"work_SGT_listhead",     112, pairHighFirst, hex8Lower},
    {"diskline_SGT_listhead", 120, pairHighFirst, hex8Lower},
    {"record_listhead",       128, pairHighFirst, hex8Lower},
    {"FER_listhead",          136, pairHighFirst, hex8Lower},
    {"slave_listhead",        144, pairHighFirst, hex8Lower},
};
inline constexpr Elements dumpIsurpListheads = {dumpIsurp, isurpListheads};

inline constexpr Field clhOfIsurp[] = {
    {"CLH_address",               40,  u32,            hex      },
 // The ISURP's own words a second time, not those of the CLH.
    {"volume_number",             24,  u32,            hex      },
    {"VLBN",                      28,  pairHighSecond, hex8Lower},
    {"CLH_flags",                 56,  u32,            hex      },
    {"valid_bitmap",              60,  pairHighSecond, hex8Lower},
    {"dirty_bitmap",              68,  pairHighSecond, hex8Lower},
    {"activity_count",            76,  u32,            hex      },
    {"host_write_activity_count", 80,  u32,            hex      },
    {"disk_read_bitmap",          84,  pairHighSecond, hex8Lower},
    {"host_write_bitmap",         92,  pairHighSecond, hex8Lower},
    {"destage_bitmap",            100, pairHighSecond, hex8Lower},
};
inline constexpr Elements dumpIsurpClh = {dumpIsurp, clhOfIsurp};

inline constexpr Field reconfigurationOfIsurp[] = {
    {"CLH_address",                 40, u32,            hex      },
    {"CLH_volume_number",           44, u32,            hex      },
    {"CLH_VLBN",                    48, pairHighSecond, hex8Lower},
    {"cache_VT_flags",              56, u32,            hex      },
    {"reconfiguration_highwater",   60, pairHighSecond, hex8Lower},
    {"max_RAID5_shortcut_clhs_old", 68, u32,            hex      },
    {"max_RAID5_shortcut_clhs_new", 72, u32,            hex      },
    {"remaining_block_count",       76, u32,            hex      },
};
/// Of the ISURP all but its `block_count`.
inline constexpr Elements dumpIsurpClhReconfig = {std::span(dumpIsurp).first<8>(),
                                                  reconfigurationOfIsurp};

inline constexpr Field overwriteClh[] = {
    {"overwrite_CLH_address",      68, u32,            hex      },
    {"overwrite_CLH_valid_bitmap", 72, pairHighSecond, hex8Lower},
    {"overwrite_CLH_dirty_bitmap", 80, pairHighSecond, hex8Lower},
};
inline constexpr Elements dumpClhOverwrite = {dumpClh, overwriteClh};

inline constexpr Field clhListheads[] = {
    {"main_listhead",     68, pairHighFirst, hex8Lower},
    {"age_listhead",      76, pairHighFirst, hex8Lower},
    {"conflict_listhead", 84, pairHighFirst, hex8Lower},
};
inline constexpr Elements dumpClhListheads = {dumpClh, clhListheads};

inline constexpr Field dumpClhCounts[] = {
    {"cache_index",      0,  u32, hex},
    {"total_clh_count",  4,  u32, hex},
    {"free_count_this",  8,  u32, hex},
    {"free_count_other", 12, u32, hex},
};

// Words without a structure. A key with a blank in it is written so.

inline constexpr Field btreeNodes[] = {
    {"free_btree_node_count", 0, u32, hex},
    {"btree_node_warning",    4, u32, hex},
    {"btree_nodes_below_min", 8, u32, hex},
};
inline constexpr Field qmirData[] = {
    {"QMIR_data", 0, u32, hex},
};
inline constexpr Field pirData[] = {
    {"PIR data", 0, u32, hex},
};
inline constexpr Field disklineMode[] = {
    {"diskline_mode", 0, u32, hex},
};
inline constexpr Field arcTables[] = {
    {"Cache_1_proctable_value", 0, u32, hex},
    {"Cache_1_arctable_size",   4, u32, hex},
};
inline constexpr Field structureHead[] = {
    {"structure_address",         0, u32, hex},
    {"first_word_after_listhead", 4, u32, hex},
};
inline constexpr Field volumeNumber[] = {
    {"volume_number", 0, u32, hex},
};
inline constexpr Field extraIsurpCount[] = {
    {"destage_extra_isurp_count", 0, u32, hex},
};
inline constexpr Field queuePopStatus[] = {
    {"queue_pop_status", 0, u32, hex},
};

// Words that stand behind a structure and are shown before it.

inline constexpr Field volumeBehindMmsg[] = {
    {"cache_VT_flags",            20, u32, hex},
    {"cache_VT_msa_queue_number", 24, u32, hex},
};
inline constexpr Elements volumeAndMmsg = {volumeBehindMmsg, dumpMmsg};

inline constexpr Field volumeBehindIsurp[] = {
    {"cache_VT_flags",            40, u32, hex},
    {"cache_VT_msa_queue_number", 44, u32, hex},
};
inline constexpr Elements volumeAndIsurp = {volumeBehindIsurp, dumpIsurp};

inline constexpr Field blocksBehindIsurp[] = {
    {"remaining_block_count", 40, u32, hex},
    {"current VLBN lower",    44, u32, hex},
};
inline constexpr Elements remainingAndIsurp = {std::span(blocksBehindIsurp).first<1>(), dumpIsurp};
inline constexpr Elements currentAndIsurp = {blocksBehindIsurp, dumpIsurp};

inline constexpr Field vlbnsBehindIsurp[] = {
    {"current VLBN", 40, u32, hex},
    {"largest VLBN", 44, u32, hex},
};
inline constexpr Elements largestAndIsurp = {vlbnsBehindIsurp, dumpIsurp};

inline constexpr Field indexBehindClh[] = {
    {"cache_index", 68, u32, hex},
};
inline constexpr Elements indexAndClh = {indexBehindClh, dumpClh};

}  // namespace mpuevent::cache

#endif
