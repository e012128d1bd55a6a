#include "decoders/cache/layouts.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace mpuevent::cache {

namespace {

using enum Width;
using enum Format;

// Structures.

constexpr Field dumpIsurpFields[] = {
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

constexpr Field dumpMmsgFields[] = {
    {"MMSG_address",     0,  u32, hexLower},
    {"request_protocol", 4,  u32, hexLower},
    {"request_type",     8,  u32, hexLower},
    {"general_use_1",    12, u32, hexLower},
    {"general_use_2",    16, u32, hexLower},
};

constexpr Field dumpSemaphoreFields[] = {
    {"valid_field", 0, u32, hexLower},
    {"value_field", 4, u32, hexLower},
};

constexpr Field dumpCacheVtFields[] = {
    {"volume_number",             0,  u32,             hexLower },
    {"cache_VT_flags",            4,  u32,             hexLower },
    {"reconfiguration_highwater", 8,  wordPairSwapped, hexLower8},
    {"old_chunkstripe_size",      16, u32,             hexLower },
    {"new_chunkstripe_size",      20, u32,             hexLower },
    {"capacity",                  24, wordPairSwapped, hexLower8},
};

constexpr Field dumpClhVtFields[] = {
    {"CLH_address",               0,  u32,             hexLower },
    {"volume_number",             4,  u32,             hexLower },
    {"VLBN",                      8,  wordPairSwapped, hexLower8},
    {"CLH_flags",                 16, u32,             hexLower },
    {"cache_VT_flags",            20, u32,             hexLower },
    {"reconfiguration_highwater", 24, wordPairSwapped, hexLower8},
    {"old_chunkstripe_size",      32, u32,             hexLower },
    {"new_chunkstripe_size",      36, u32,             hexLower },
};

constexpr Field dumpClhFields[] = {
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

constexpr Field isurpListheads[] = {
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

// `volume_number` and `VLBN` show the words of the ISURP a second time, not those of the CLH: the
// output wants it so.
constexpr Field clhOfIsurp[] = {
    {"CLH_address",               40,  u32,             hexLower },
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

constexpr Field reconfigurationOfIsurp[] = {
    {"CLH_address",                 40, u32,             hexLower },
    {"CLH_volume_number",           44, u32,             hexLower },
    {"CLH_VLBN",                    48, wordPairSwapped, hexLower8},
    {"cache_VT_flags",              56, u32,             hexLower },
    {"reconfiguration_highwater",   60, wordPairSwapped, hexLower8},
    {"max_RAID5_shortcut_clhs_old", 68, u32,             hexLower },
    {"max_RAID5_shortcut_clhs_new", 72, u32,             hexLower },
    {"remaining_block_count",       76, u32,             hexLower },
};

constexpr Field overwriteClh[] = {
    {"overwrite_CLH_address",      68, u32,             hexLower },
    {"overwrite_CLH_valid_bitmap", 72, wordPairSwapped, hexLower8},
    {"overwrite_CLH_dirty_bitmap", 80, wordPairSwapped, hexLower8},
};

constexpr Field clhListheads[] = {
    {"main_listhead",     68, wordPair, hexLower8},
    {"age_listhead",      76, wordPair, hexLower8},
    {"conflict_listhead", 84, wordPair, hexLower8},
};

constexpr Field dumpClhCountsFields[] = {
    {"cache_index",      0,  u32, hexLower},
    {"total_clh_count",  4,  u32, hexLower},
    {"free_count_this",  8,  u32, hexLower},
    {"free_count_other", 12, u32, hexLower},
};

// Words that belong to no structure. The blanks in some keys go into the tags as they are.

constexpr Field btreeNodesFields[] = {
    {"free_btree_node_count", 0, u32, hexLower},
    {"btree_node_warning",    4, u32, hexLower},
    {"btree_nodes_below_min", 8, u32, hexLower},
};
constexpr Field qmirDataFields[] = {
    {"QMIR_data", 0, u32, hexLower},
};
constexpr Field pirDataFields[] = {
    {"PIR data", 0, u32, hexLower},
};
constexpr Field disklineModeFields[] = {
    {"diskline_mode", 0, u32, hexLower},
};
constexpr Field arcTablesFields[] = {
    {"Cache_1_proctable_value", 0, u32, hexLower},
    {"Cache_1_arctable_size",   4, u32, hexLower},
};
constexpr Field structureHeadFields[] = {
    {"structure_address",         0, u32, hexLower},
    {"first_word_after_listhead", 4, u32, hexLower},
};
constexpr Field volumeNumberFields[] = {
    {"volume_number", 0, u32, hexLower},
};
constexpr Field extraIsurpCountFields[] = {
    {"destage_extra_isurp_count", 0, u32, hexLower},
};
constexpr Field queuePopStatusFields[] = {
    {"queue_pop_status", 0, u32, hexLower},
};

// Words that stand behind a structure but are shown before it.

constexpr Field volumeBehindMmsg[] = {
    {"cache_VT_flags",            20, u32, hexLower},
    {"cache_VT_msa_queue_number", 24, u32, hexLower},
};

constexpr Field volumeBehindIsurp[] = {
    {"cache_VT_flags",            40, u32, hexLower},
    {"cache_VT_msa_queue_number", 44, u32, hexLower},
};

constexpr Field blocksBehindIsurp[] = {
    {"remaining_block_count", 40, u32, hexLower},
    {"current VLBN lower",    44, u32, hexLower},
};

constexpr Field vlbnsBehindIsurp[] = {
    {"current VLBN", 40, u32, hexLower},
    {"largest VLBN", 44, u32, hexLower},
};

constexpr Field indexBehindClh[] = {
    {"cache_index", 68, u32, hexLower},
};

using enum Shown;

// Functions, as tables of tables would have a relocation for each.

/// Each table by itself.
Fields tableOf(Shown shown) {
  switch (shown) {
    case arcTables:
      return packed<arcTablesFields>;
    case btreeNodes:
      return packed<btreeNodesFields>;
    case disklineMode:
      return packed<disklineModeFields>;
    case dumpCacheVt:
      return packed<dumpCacheVtFields>;
    case dumpClh:
      return packed<dumpClhFields>;
    case dumpClhCounts:
      return packed<dumpClhCountsFields>;
    case dumpClhVt:
      return packed<dumpClhVtFields>;
    case dumpIsurp:
      return packed<dumpIsurpFields>;
    case dumpMmsg:
      return packed<dumpMmsgFields>;
    case dumpSemaphore:
      return packed<dumpSemaphoreFields>;
    case extraIsurpCount:
      return packed<extraIsurpCountFields>;
    case pirData:
      return packed<pirDataFields>;
    case qmirData:
      return packed<qmirDataFields>;
    case queuePopStatus:
      return packed<queuePopStatusFields>;
    case structureHead:
      return packed<structureHeadFields>;
    case volumeNumber:
      return packed<volumeNumberFields>;
    default:
      return {};
  }
}

/// Tables that follow a structure, or come before it.
Elements pairOf(Shown shown) {
  switch (shown) {
    case dumpIsurpListheads:
      return {packed<dumpIsurpFields>, packed<isurpListheads>};
    case dumpIsurpClh:
      return {packed<dumpIsurpFields>, packed<clhOfIsurp>};
    // Of the ISURP all but its last row, `block_count`.
    case dumpIsurpClhReconfig:
      return {std::span(packed<dumpIsurpFields>).first<8>(), packed<reconfigurationOfIsurp>};
    case dumpClhOverwrite:
      return {packed<dumpClhFields>, packed<overwriteClh>};
    case dumpClhListheads:
      return {packed<dumpClhFields>, packed<clhListheads>};
    case volumeAndMmsg:
      return {packed<volumeBehindMmsg>, packed<dumpMmsgFields>};
    case volumeAndIsurp:
      return {packed<volumeBehindIsurp>, packed<dumpIsurpFields>};
    case remainingAndIsurp:
      return {std::span(packed<blocksBehindIsurp>).first<1>(), packed<dumpIsurpFields>};
    case currentAndIsurp:
      return {packed<blocksBehindIsurp>, packed<dumpIsurpFields>};
    case largestAndIsurp:
      return {packed<vlbnsBehindIsurp>, packed<dumpIsurpFields>};
    case indexAndClh:
      return {packed<indexBehindClh>, packed<dumpClhFields>};
    default:
      return {};
  }
}

}  // namespace

Elements elementsOf(Shown shown) {
  return shown < dumpIsurpListheads ? Elements{tableOf(shown)} : pairOf(shown);
}

}  // namespace mpuevent::cache
