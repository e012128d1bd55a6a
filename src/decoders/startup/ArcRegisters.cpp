#include <MPUEvent/ArcRegisters.h>

#include <algorithm>
#include <cstddef>

namespace Pegasus {

namespace {

constexpr std::uint32_t mask(std::int32_t lowestBit, std::int32_t width) {
  return 0xFFFFFFFFU >> (32 - width) << lowestBit;
}

template <std::size_t size>
constexpr ArcRegisterField field(const char (&name)[size], std::int32_t lowestBit,
                                 std::int32_t width) {
  ArcRegisterField row{{}, mask(lowestBit, width), lowestBit, width};
  static_assert(size <= sizeof row.name);
  std::copy(name, name + size, row.name);
  return row;
}

constexpr ArcRegisterField endOfFields = {"", 0, -1, 0};

}  // namespace

// Name, lowest bit, width.
// clang-format off

constexpr ArcRegisterField rtTavo4ArcSTATUSFields[] = {
    field("Z", 31, 1),
    field("N", 30, 1),
    field("C", 29, 1),
    field("V", 28, 1),
    field("E2", 27, 1),
    field("E1", 26, 1),
    field("H", 25, 1),
    field("R", 24, 1),
    field("PC", 0, 24),
    endOfFields,
};

constexpr ArcRegisterField rtTavo4ArcIDENTITYFields[] = {
    field("MANCODE", 24, 8),
    field("MANVER", 16, 8),
    field("ARCNUM", 8, 8),
    field("ARCVER", 0, 8),
    endOfFields,
};

constexpr ArcRegisterField rtTavo4ArcVECBASEADRFields[] = {
    field("rsvd", 24, 8),
    field("PC", 0, 24),
    endOfFields,
};

constexpr ArcRegisterField rtTavo4IRQ_LEVFields[] = {
    field("rsvd1", 9, 23),
    field("IRQ_6", 8, 1),
    field("IRQ_5", 7, 1),
    field("rsvd2", 2, 5),
    endOfFields,
};

constexpr ArcRegisterField rtTavo4IRQ_HINTFields[] = {
    field("rsvd", 5, 27),
    field("IRQ_NUM", 0, 5),
    endOfFields,
};

constexpr ArcRegisterField rtTavo4ARC_CTLFields[] = {
    field("rsvd", 14, 18),
    field("RC", 13, 1),
    field("IC", 12, 1),
    field("WR", 11, 1),
    field("RR", 10, 1),
    field("INT6", 9, 1),
    field("INT5", 8, 1),
    field("L2C_LAST", 7, 1),
    field("FP", 6, 1),
    field("WP", 4, 2),
    field("LI", 3, 1),
    field("PE", 2, 1),
    field("BE", 1, 1),
    field("AD", 0, 1),
    endOfFields,
};

constexpr ArcRegisterField rtTavo4ERR_STAFields[] = {
    field("rsvd", 8, 24),
    field("ID", 7, 1),
    field("II", 6, 1),
    field("SB", 5, 1),
    field("DT", 4, 1),
    field("IT", 3, 1),
    field("SC", 2, 1),
    field("DC", 1, 1),
    field("IC", 0, 1),
    endOfFields,
};

// The same fields as in ERR_STA: the bit that reports an error there enables its interrupt here.
constexpr ArcRegisterField rtTavo4ERR_INT_ENFields[] = {
    rtTavo4ERR_STAFields[0], rtTavo4ERR_STAFields[1], rtTavo4ERR_STAFields[2],
    rtTavo4ERR_STAFields[3], rtTavo4ERR_STAFields[4], rtTavo4ERR_STAFields[5],
    rtTavo4ERR_STAFields[6], rtTavo4ERR_STAFields[7], rtTavo4ERR_STAFields[8],
    endOfFields,
};

constexpr ArcRegisterField rtTavo4SYS_PE_STAFields[] = {
    field("rsvd", 5, 27),
    field("CF", 4, 1),
    field("PTR", 0, 4),
    endOfFields,
};

// clang-format on

// Name, offset, instances, width, fields. The last instances of REG_312 lie where ARC_CORE begins;
// the table is required so.
constexpr ArcRegister rtTavo4ArcRegsNames[] = {
    {"STATUS",             0,    1,   32, rtTavo4ArcSTATUSFields    },
    {"SEMA",               4,    1,   32, nullptr                   },
    {"LPSTART",            8,    1,   32, nullptr                   },
    {"LPEND",              12,   1,   32, nullptr                   },
    {"IDENTITY",           16,   1,   32, rtTavo4ArcIDENTITYFields  },
    {"DEBUG",              20,   1,   32, nullptr                   },
    {"REG_6",              24,   1,   32, nullptr                   },
    {"REG_7",              28,   1,   32, nullptr                   },
    {"REG_8",              32,   1,   32, nullptr                   },
    {"REG_9",              36,   1,   32, nullptr                   },
    {"REG_A",              40,   1,   32, nullptr                   },
    {"REG_B",              44,   1,   32, nullptr                   },
    {"REG_C",              48,   1,   32, nullptr                   },
    {"REG_D",              52,   1,   32, nullptr                   },
    {"REG_E",              56,   1,   32, nullptr                   },
    {"REG_F",              60,   1,   32, nullptr                   },
    {"IC_IVIC",            64,   1,   32, nullptr                   },
    {"IC_CTRL",            68,   1,   32, nullptr                   },
    {"REG_12",             72,   1,   32, nullptr                   },
    {"IC_LIL",             76,   1,   32, nullptr                   },
    {"REG_14",             80,   1,   32, nullptr                   },
    {"REG_15",             84,   1,   32, nullptr                   },
    {"REG_16",             88,   1,   32, nullptr                   },
    {"REG_17",             92,   1,   32, nullptr                   },
    {"REG_18",             96,   1,   32, nullptr                   },
    {"IC_IVIL",            100,  1,   32, nullptr                   },
    {"IC_RAM_ADDRESS",     104,  1,   32, nullptr                   },
    {"IC_TAG",             108,  1,   32, nullptr                   },
    {"IC_WP",              112,  1,   32, nullptr                   },
    {"IC_DATA",            116,  1,   32, nullptr                   },
    {"REG_1E",             120,  1,   32, nullptr                   },
    {"REG_1F",             124,  1,   32, nullptr                   },
    {"REG_20",             128,  1,   32, nullptr                   },
    {"COUNT",              132,  1,   32, nullptr                   },
    {"CONTROL",            136,  1,   32, nullptr                   },
    {"LIMIT",              140,  1,   32, nullptr                   },
    {"REG_24",             144,  1,   32, nullptr                   },
    {"REG_25",             148,  1,   32, nullptr                   },
    {"REG_26",             152,  1,   32, nullptr                   },
    {"REG_27",             156,  1,   32, nullptr                   },
    {"REG_28",             160,  1,   32, nullptr                   },
    {"REG_29",             164,  1,   32, nullptr                   },
    {"REG_2A",             168,  1,   32, nullptr                   },
    {"REG_2B",             172,  1,   32, nullptr                   },
    {"REG_2C",             176,  1,   32, nullptr                   },
    {"REG_2D",             180,  1,   32, nullptr                   },
    {"REG_2E",             184,  1,   32, nullptr                   },
    {"REG_2F",             188,  1,   32, nullptr                   },
    {"REG_30",             192,  1,   32, nullptr                   },
    {"REG_31",             196,  1,   32, nullptr                   },
    {"REG_32",             200,  1,   32, nullptr                   },
    {"REG_33",             204,  1,   32, nullptr                   },
    {"REG_34",             208,  1,   32, nullptr                   },
    {"REG_35",             212,  1,   32, nullptr                   },
    {"REG_36",             216,  1,   32, nullptr                   },
    {"REG_37",             220,  1,   32, nullptr                   },
    {"BURST_SIZE",         224,  1,   32, nullptr                   },
    {"SCRATCH_A",          228,  1,   32, nullptr                   },
    {"LOAD_A",             232,  1,   32, nullptr                   },
    {"STORE_A",            236,  1,   32, nullptr                   },
    {"BM_STATUS",          240,  1,   32, nullptr                   },
    {"REG_3D",             244,  1,   32, nullptr                   },
    {"REG_3E",             248,  1,   32, nullptr                   },
    {"REG_3F",             252,  1,   32, nullptr                   },
    {"REG_40",             256,  1,   32, nullptr                   },
    {"REG_41",             260,  1,   32, nullptr                   },
    {"REG_42",             264,  1,   32, nullptr                   },
    {"AUX_IRQ_LV12",       268,  1,   32, nullptr                   },
    {"REG_44",             272,  1,   32, nullptr                   },
    {"REG_45",             276,  1,   32, nullptr                   },
    {"REG_46",             280,  1,   32, nullptr                   },
    {"DC_IVDC",            284,  1,   32, nullptr                   },
    {"DC_CTRL",            288,  1,   32, nullptr                   },
    {"DC_LDL",             292,  1,   32, nullptr                   },
    {"DC_IVDL",            296,  1,   32, nullptr                   },
    {"DC_FLSH",            300,  1,   32, nullptr                   },
    {"DC_FLDL",            304,  1,   32, nullptr                   },
    {"REG_4D",             308,  1,   32, nullptr                   },
    {"REG_4E",             312,  1,   32, nullptr                   },
    {"REG_4F",             316,  1,   32, nullptr                   },
    {"REG_50",             320,  1,   32, nullptr                   },
    {"REG_51",             324,  1,   32, nullptr                   },
    {"REG_52",             328,  1,   32, nullptr                   },
    {"REG_53",             332,  1,   32, nullptr                   },
    {"REG_54",             336,  1,   32, nullptr                   },
    {"REG_55",             340,  1,   32, nullptr                   },
    {"REG_56",             344,  1,   32, nullptr                   },
    {"REG_57",             348,  1,   32, nullptr                   },
    {"DC_RAM_ADDR",        352,  1,   32, nullptr                   },
    {"DC_TAG",             356,  1,   32, nullptr                   },
    {"DC_WP",              360,  1,   32, nullptr                   },
    {"DC_DATA",            364,  1,   32, nullptr                   },
    {"REG_5C",             368,  1,   32, nullptr                   },
    {"REG_5D",             372,  1,   32, nullptr                   },
    {"REG_5E",             376,  1,   32, nullptr                   },
    {"REG_5F",             380,  1,   32, nullptr                   },
    {"REG_60",             384,  1,   32, nullptr                   },
    {"REG_61",             388,  1,   32, nullptr                   },
    {"REG_62",             392,  1,   32, nullptr                   },
    {"REG_63",             396,  1,   32, nullptr                   },
    {"REG_64",             400,  1,   32, nullptr                   },
    {"REG_65",             404,  1,   32, nullptr                   },
    {"REG_66",             408,  1,   32, nullptr                   },
    {"REG_67",             412,  1,   32, nullptr                   },
    {"REG_68",             416,  1,   32, nullptr                   },
    {"REG_69",             420,  1,   32, nullptr                   },
    {"REG_6A",             424,  1,   32, nullptr                   },
    {"REG_6B",             428,  1,   32, nullptr                   },
    {"REG_6C",             432,  1,   32, nullptr                   },
    {"REG_6D",             436,  1,   32, nullptr                   },
    {"REG_6E",             440,  1,   32, nullptr                   },
    {"REG_6F",             444,  1,   32, nullptr                   },
    {"REG_70",             448,  1,   32, nullptr                   },
    {"VECBASEADR",         452,  1,   32, rtTavo4ArcVECBASEADRFields},
    {"D_CACHE_BUILD",      456,  1,   32, nullptr                   },
    {"REG_73",             460,  1,   32, nullptr                   },
    {"REG_74",             464,  1,   32, nullptr                   },
    {"REG_75",             468,  1,   32, nullptr                   },
    {"REG_76",             472,  1,   32, nullptr                   },
    {"I_CACHE_BUID",       476,  1,   32, nullptr                   },
    {"REG_78",             480,  1,   32, nullptr                   },
    {"REG_79",             484,  1,   32, nullptr                   },
    {"REG_7A",             488,  1,   32, nullptr                   },
    {"REG_7B",             492,  1,   32, nullptr                   },
    {"REG_7C",             496,  1,   32, nullptr                   },
    {"REG_7D",             500,  1,   32, nullptr                   },
    {"REG_7E",             504,  1,   32, nullptr                   },
    {"REG_7F",             508,  1,   32, nullptr                   },
    {"SCRATCH",            512,  64,  32, nullptr                   },
    {"REG_C0",             768,  64,  32, nullptr                   },
    {"COUNT1",             1024, 1,   32, nullptr                   },
    {"CONTROL1",           1028, 1,   32, nullptr                   },
    {"LIMIT1",             1032, 1,   32, nullptr                   },
    {"REG_103",            1036, 253, 32, nullptr                   },
    {"IRQ_LEV",            2048, 1,   32, rtTavo4IRQ_LEVFields      },
    {"IRQ_HINT",           2052, 1,   32, rtTavo4IRQ_HINTFields     },
    {"REG_202",            2056, 254, 32, nullptr                   },
    {"ARC_CTL",            3072, 1,   32, rtTavo4ARC_CTLFields      },
    {"ERR_STA",            3076, 1,   32, rtTavo4ERR_STAFields      },
    {"ERR_INT_EN",         3080, 1,   32, rtTavo4ERR_INT_ENFields   },
    {"IC_PE_ADDR",         3084, 1,   32, nullptr                   },
    {"DC_PE_ADDR",         3088, 1,   32, nullptr                   },
    {"SCR_PE_ADDR",        3092, 1,   32, nullptr                   },
    {"LTAG_PE_ADDR",       3096, 1,   32, nullptr                   },
    {"DC_TAG_PE_ADDR",     3100, 1,   32, nullptr                   },
    {"SYS_PE_STA",         3104, 1,   32, rtTavo4SYS_PE_STAFields   },
    {"NCADDR",             3108, 1,   32, nullptr                   },
    {"ILLEGAL_ADDR",       3112, 1,   32, nullptr                   },
    {"PMUX_SEL_REG",       3116, 1,   32, nullptr                   },
    {"RANGE0_LO_REG",      3120, 1,   32, nullptr                   },
    {"RANGE0_HI_REG",      3124, 1,   32, nullptr                   },
    {"RANGE1_LO_REG",      3128, 1,   32, nullptr                   },
    {"RANGE1_HI_REG",      3132, 1,   32, nullptr                   },
    {"PARITY_ERR_SET_REG", 3136, 1,   32, nullptr                   },
    {"WR_RESP_STATUS",     3140, 1,   32, nullptr                   },
    {"REG_312",            3144, 253, 32, nullptr                   },
    {"ARC_CORE",           4096, 32,  32, nullptr                   },
    {"EXT_CORE",           4224, 32,  32, nullptr                   },
    {"",                   -1,   0,   0,  nullptr                   },
};

}  // namespace Pegasus
