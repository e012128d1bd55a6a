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
    {"ISURP_address",       0,  u32,             hexLower },
    {"type_opcode_state",   4,  u32,             hexLower },
    {"scsi_flags",          8,  u32,             hexLower },
    {"cache_manager_flags", 12, u32,             hexLower },
    {"io_manager_flags",    16, u32,             hexLower },
    {"iscsi_flags",         20, u32,             hexLower },
    {"volume_number",       24, u32,             hexLower },
    {"VLBN",                28, wordPairSwapped, hexLower8},
    {"block_count",         36, u32,             hexLower },
};

inline constexpr Field dumpMmsg[] = {
    {"MMSG_address",     0,  u32, hexLower},
    {"request_protocol", 4,  u32, hexLower},
    {"request_type",     8,  u32, hexLower},
    {"general_use_1",    12, u32, hexLower},
    {"general_use_2",    16, u32, hexLower},
};

inline constexpr Field dumpSemaphore[] = {
    {"valid_field", 0, u32, hexLower},
    {"value_field", 4, u32, hexLower},
};

inline constexpr Field dumpCacheVt[] = {
    {"volume_number",             0,  u32,             hexLower },
    {"cache_VT_flags",            4,  u32,             hexLower },
    {"reconfiguration_highwater", 8,  wordPairSwapped, hexLower8},
    {"old_chunkstripe_size",      16, u32,             hexLower },
    {"new_chunkstripe_size",      20, u32,             hexLower },
    {"capacity",                  24, wordPairSwapped, hexLower8},
};

inline constexpr Field dumpClhVt[] = {
    {"CLH_address",               0,  u32,             hexLower },
    {"volume_number",             4,  u32,             hexLower },
    {"VLBN",                      8,  wordPairSwapped, hexLower8},
    {"CLH_flags",                 16, u32,             hexLower },
    {"cache_VT_flags",            20, u32,             hexLower },
    {"reconfiguration_highwater", 24, wordPairSwapped, hexLower8},
    {"old_chunkstripe_size",      32, u32,             hexLower },
    {"new_chunkstripe_size",      36, u32,             hexLower },
};

inline constexpr Field dumpClh[] = {
    {"CLH_address",               0,  u32,             hexLower },
    {"volume_number",             4,  u32,             hexLower },
    {"VLBN",                      8,  wordPairSwapped, hexLower8},
    {"CLH_flags",                 16, u32,             hexLower },
    {"valid_bitmap",              20, wordPairSwapped, hexLower8},
    {"dirty_bitmap",              28, wordPairSwapped, hexLower8},
    {"activity_count",            36, u32,             hexLower },
    {"host_write_activity_count", 40, u32,             hexLower },
    {"disk_read_bitmap",          44, wordPairSwapped, hexLower8},
    {"host_write_bitmap",         52, wordPairSwapped, hexLower8},
    {"destage_bitmap",            60, wordPairSwapped, hexLower8},
};

inline constexpr Field isurpListheads[] = {
    {"main_listhead",         40,  wordPair, hexLower8},
    {"sgt_listhead",          48,  wordPair, hexLower8},
    {"cache_listhead",        56,  wordPair, hexLower8},
    {"IO_listhead",           64,  wordPair, hexLower8},
    {"iSCSI_listhead",        72,  wordPair, hexLower8},
    {"SCSI_listhead",         80,  wordPair, hexLower8},
    {"VT_listhead",           88,  wordPair, hexLower8},
    {"DRP_listhead",          96,  wordPair, hexLower8},
    {"error_DRP_listhead",    104, wordPair, hexLower8},
    {"work_SGT_listhead",     112, wordPair, hexLower8},
    {"diskline_SGT_listhead", 120, wordPair, hexLower8},
    {"record_listhead",       128, wordPair, hexLower8},
    {"FER_listhead",          136, wordPair, hexLower8},
    {"slave_listhead",        144, wordPair, hexLower8},
};
inline constexpr Elements dumpIsurpListheads = {dumpIsurp, isurpListheads};

inline constexpr Field clhOfIsurp[] = {
    {"CLH_address",               40,  u32,             hexLower },
 // The ISURP's own words a second time, not those of the CLH.
    {"volume_number",             24,  u32,             hexLower },
    {"VLBN",                      28,  wordPairSwapped, hexLower8},
    {"CLH_flags",                 56,  u32,             hexLower },
    {"valid_bitmap",              60,  wordPairSwapped, hexLower8},
    {"dirty_bitmap",              68,  wordPairSwapped, hexLower8},
    {"activity_count",            76,  u32,             hexLower },
    {"host_write_activity_count", 80,  u32,             hexLower },
    {"disk_read_bitmap",          84,  wordPairSwapped, hexLower8},
    {"host_write_bitmap",         92,  wordPairSwapped, hexLower8},
    {"destage_bitmap",            100, wordPairSwapped, hexLower8},
};
inline constexpr Elements dumpIsurpClh = {dumpIsurp, clhOfIsurp};

inline constexpr Field reconfigurationOfIsurp[] = {
    {"CLH_address",                 40, u32,             hexLower },
    {"CLH_volume_number",           44, u32,             hexLower },
    {"CLH_VLBN",                    48, wordPairSwapped, hexLower8},
    {"cache_VT_flags",              56, u32,             hexLower },
    {"reconfiguration_highwater",   60, wordPairSwapped, hexLower8},
    {"max_RAID5_shortcut_clhs_old", 68, u32,             hexLower },
    {"max_RAID5_shortcut_clhs_new", 72, u32,             hexLower },
    {"remaining_block_count",       76, u32,             hexLower },
};
/// Of the ISURP all but its `block_count`.
inline constexpr Elements dumpIsurpClhReconfig = {std::span(dumpIsurp).first<8>(),
                                                  reconfigurationOfIsurp};

inline constexpr Field overwriteClh[] = {
    {"overwrite_CLH_address",      68, u32,             hexLower },
    {"overwrite_CLH_valid_bitmap", 72, wordPairSwapped, hexLower8},
    {"overwrite_CLH_dirty_bitmap", 80, wordPairSwapped, hexLower8},
};
inline constexpr Elements dumpClhOverwrite = {dumpClh, overwriteClh};

inline constexpr Field clhListheads[] = {
    {"main_listhead",     68, wordPair, hexLower8},
    {"age_listhead",      76, wordPair, hexLower8},
    {"conflict_listhead", 84, wordPair, hexLower8},
};
inline constexpr Elements dumpClhListheads = {dumpClh, clhListheads};

inline constexpr Field dumpClhCounts[] = {
    {"cache_index",      0,  u32, hexLower},
    {"total_clh_count",  4,  u32, hexLower},
    {"free_count_this",  8,  u32, hexLower},
    {"free_count_other", 12, u32, hexLower},
};

// Words without a structure. A key with a blank in it is written so.

inline constexpr Field btreeNodes[] = {
    {"free_btree_node_count", 0, u32, hexLower},
    {"btree_node_warning",    4, u32, hexLower},
    {"btree_nodes_below_min", 8, u32, hexLower},
};
inline constexpr Field qmirData[] = {
    {"QMIR_data", 0, u32, hexLower},
};
inline constexpr Field pirData[] = {
    {"PIR data", 0, u32, hexLower},
};
inline constexpr Field disklineMode[] = {
    {"diskline_mode", 0, u32, hexLower},
};
inline constexpr Field arcTables[] = {
    {"Cache_1_proctable_value", 0, u32, hexLower},
    {"Cache_1_arctable_size",   4, u32, hexLower},
};
inline constexpr Field structureHead[] = {
    {"structure_address",         0, u32, hexLower},
    {"first_word_after_listhead", 4, u32, hexLower},
};
inline constexpr Field volumeNumber[] = {
    {"volume_number", 0, u32, hexLower},
};
inline constexpr Field extraIsurpCount[] = {
    {"destage_extra_isurp_count", 0, u32, hexLower},
};
inline constexpr Field queuePopStatus[] = {
    {"queue_pop_status", 0, u32, hexLower},
};

// Words that stand behind a structure and are shown before it.

inline constexpr Field volumeBehindMmsg[] = {
    {"cache_VT_flags",            20, u32, hexLower},
    {"cache_VT_msa_queue_number", 24, u32, hexLower},
};
inline constexpr Elements volumeAndMmsg = {volumeBehindMmsg, dumpMmsg};

inline constexpr Field volumeBehindIsurp[] = {
    {"cache_VT_flags",            40, u32, hexLower},
    {"cache_VT_msa_queue_number", 44, u32, hexLower},
};
inline constexpr Elements volumeAndIsurp = {volumeBehindIsurp, dumpIsurp};

inline constexpr Field blocksBehindIsurp[] = {
    {"remaining_block_count", 40, u32, hexLower},
    {"current VLBN lower",    44, u32, hexLower},
};
inline constexpr Elements remainingAndIsurp = {std::span(blocksBehindIsurp).first<1>(), dumpIsurp};
inline constexpr Elements currentAndIsurp = {blocksBehindIsurp, dumpIsurp};

inline constexpr Field vlbnsBehindIsurp[] = {
    {"current VLBN", 40, u32, hexLower},
    {"largest VLBN", 44, u32, hexLower},
};
inline constexpr Elements largestAndIsurp = {vlbnsBehindIsurp, dumpIsurp};

inline constexpr Field indexBehindClh[] = {
    {"cache_index", 68, u32, hexLower},
};
inline constexpr Elements indexAndClh = {indexBehindClh, dumpClh};

}  // namespace mpuevent::cache

#endif
