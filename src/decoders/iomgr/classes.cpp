#include "decoders/iomgr/classes.h"

#include <optional>
#include <span>
#include <string_view>

#include "event/Entry.h"

namespace mpuevent::iomgr {

namespace {

using enum RecordKind;

// The names are those of the firmware, slips of spelling included.

constexpr EventRow managerEvents[] = {
    {1,   "Manager MQX Event",               lwsem    },
    {9,   "Manager Unexpected Interrupt",    interrupt},
    {10,  "Manager Unexpected Message Type", message  },
    {26,  "Manager Invalid DRP",             drp      },
    {32,  "Manager MSA Event",               msa      },
    {516, "DRP Detected Error Status",       drp      },
};

constexpr EventRow rebuildEvents[] = {
    {3,    "Rebuild Unregonized Volume Type", volume      },
    {5,    "Rebuild Extent Search Error",     volume      },
    {11,   "Rebuild Unexpected Error",        nothing     },
    {26,   "Rebuild Invalid DRP",             drp         },
    {506,  "Rebuild Task Error",              volumeNumber},
    {512,  "Rebuild Medium Error Repaired",   drp         },
    {1001, "Rebuild Task Started",            volumeNumber},
    {1002, "Rebuild Task Completed",          volumeNumber},
};

constexpr EventRow reconfigEvents[] = {
    {3,    "Reconfig Unrecognized Volume Type", volume      },
    {4,    "Reconfig Enomem",                   nothing     },
    {5,    "Reconfig Extent Search Error",      drp + volume},
    {11,   "Reconfig Unexpected Error",         nothing     },
    {12,   "Reconfig VLBN Error",               nothing     },
    {20,   "Reconfig Highwater Error",          volume      },
    {25,   "Reconfig Invalid ISURP",            isurp       },
    {26,   "Reconfig Invalid DRP",              drp         },
    {506,  "Reconfig Task Error",               volumeNumber},
    {512,  "Reconfig Medium Error Repaired",    drp         },
    {517,  "Reconfig Forced Error Detected",    dlm         },
    {1001, "Reconfig Task Started",             volumeNumber},
    {1002, "Reconfig Task Completed",           volumeNumber},
};

constexpr EventRow bbscanEvents[] = {
    {3,    "Bbscan Unrecognized Volume Type",           volume      },
    {4,    "Bbscan Enomem",                             nothing     },
    {5,    "Bbscan Extent Search Error",                drp + volume},
    {11,   "Bbscan Unexpected Error",                   nothing     },
    {506,  "Bbscan Task Error",                         volumeNumber},
    {512,  "Bad Block Scan Scan Medium Error Repaired", drp         },
    {1001, "Bbscan Task Started",                       volumeNumber},
    {1002, "Bbscan Task Completed",                     volumeNumber},
};

constexpr EventRow xoeEvents[] = {
    {1, "Manager MQX Event", lwsem  }, // the name of class 1
    {7, "XOE Overflow",      nothing},
    {8, "XOE Empty Buffer",  nothing},
};

constexpr EventRow errorRecoveryEvents[] = {
    {3,   "Error Recovery Unrecognized Volume Type", volume      },
    {5,   "Error Recovery Extent Search Error",      drp + volume},
    {12,  "Error Recovery Extent VLBN Error",        drp + volume},
    {13,  "Error Recovery Invalid Param",            nothing     },
    {22,  "Error Recovery Translate Error",          nothing     },
    {26,  "Error Recovery Invalid DRP",              drp         },
    {501, "Device Error",                            dib         },
    {510, "Volume State Transition",                 volume      },
    {512, "Error Recovery Medium Error Repaired",    drp         },
};

constexpr EventRow metadataEvents[] = {
    {1,   "Metadata MQX Event",                    lwsem  },
    {2,   "Metadata Invalid MMSG",                 mmsg   },
    {3,   "Metadata Unrecognized Volume Type",     volume },
    {4,   "Metadata Enomem",                       nothing},
    {11,  "Metadata Unexpected Error",             nothing},
    {13,  "Metadata Invalid Param",                nothing},
    {21,  "Metadata Max Volumes Reached",          nothing},
    {23,  "Metadata MPU Metadata Invalid",         nothing},
    {25,  "Metadata Invalid ISURP",                isurp  },
    {26,  "Metadata Invalid DRP",                  drp    },
    {501, "Metadata Device Error",                 dib    },
    {502, "Metadata VRE Database Not Found",       nothing},
    {508, "Drives not found for metadata request", nothing},
};

constexpr EventRow isurpprocEvents[] = {
    {1,  "ISURPPROC MQX Event",                lwsem },
    {3,  "ISURPPROC Unrecognized Volume Type", volume},
    {25, "ISURPPROC Invalid ISURP",            isurp },
};

constexpr EventRow drpprocEvents[] = {
    {26, "DRPPROC Invalid DRP", drp},
};

constexpr EventRow bgEvents[] = {
    {1,  "BG MQX Event",     lwsem},
    {25, "BG Invalid ISURP", isurp},
};

constexpr EventRow databaseEvents[] = {
    {4,  "Database ENOMEM",          nothing},
    {6,  "Database Uninit Listhead", nothing},
    {7,  "Database Overflow",        nothing},
    {13, "Database Invalid Param",   nothing},
};

constexpr EventRow isrEvents[] = {
    {1, "ISR installation failure", nothing  },
    {7, "ISR Overflow",             nothing  },
    {8, "ISR Empty Buffer",         nothing  },
    {9, "ISR Unexpected Interrupt", interrupt},
};

constexpr EventRow startupEvents[] = {
    {1, "Startup MQX Error", nothing},
};

constexpr EventRow svEvents[] = {
    {8,  "SV Empty Buffer",     isurp + sgtList},
    {11, "SV Unexpected Error", nothing        },
    {12, "SV VLBN Error",       isurp + volume },
    {13, "SV Invalid Param",    nothing        },
    {14, "SV Virtualize Error", isurp          },
    {24, "SV Drive Load Error", nothing        },
    {25, "SV Invalid ISURP",    isurp          },
};

constexpr EventRow dlmEvents[] = {
    {12,  "DLM Extent VLBN Error",               drp + sgtList},
    {16,  "DLM Search Error",                    dlm          },
    {26,  "DLM Invalid DRP",                     drp          },
    {513, "DLM Search CRC Error Detected",       dlm          },
    {514, "DLM Copy Mistmatch Detected",         dlm          },
    {515, "DLM Search Marker Mismatch Detected", dlm          },
};

constexpr EventRow crcInitEvents[] = {
    {3,    "CRCINIT Unrecognized Volume Type", volume      },
    {4,    "CRCINIT ENOMEM",                   volume      },
    {5,    "CRCINIT Extent Search Error",      drp + volume},
    {11,   "CRCINIT Unexpected Error",         volume      },
    {25,   "CRCINIT Invalid ISURP",            isurp       },
    {26,   "CRCINIT Invalid DRP",              drp         },
    {506,  "CRCINIT Task Error",               volumeNumber},
    {512,  "CRCINIT Medium Error Repaired",    drp         },
    {517,  "CRCINIT Forced Error Detected",    dlm         },
    {1001, "CRCINIT Task Started",             volumeNumber},
    {1002, "CRCINIT Task Completed",           volumeNumber},
};

constexpr EventRow parityEvents[] = {
    {1,  "Parity MQX Event",                lwsem          },
    {3,  "Parity Unrecognized Volume Type", volume         },
    {4,  "Parity ENOMEM",                   nothing        },
    {5,  "Parity Extent Search Error",      isurp + volume },
    {11, "Parity Unexpected Error",         nothing        },
    {13, "Parity Invalid Param",            nothing        },
    {17, "Parity Table Invalid Param",      isurp + sgtList},
    {18, "Parity Invalid Parity Flag",      nothing        },
    {19, "Parity Build Table Error",        nothing        },
    {25, "Parity Invalid ISURP",            isurp          },
    {26, "Parity Invalid DRP",              drp            },
};

constexpr EventRow parityInitEvents[] = {
    {4,    "Parity Init ENOMEM",                nothing        },
    {11,   "Parity Init Unexpected Error",      nothing        },
    {19,   "Parity Init Table Error",           isurp + sgtList},
    {25,   "Parity Init Invalid ISURP",         isurp          },
    {506,  "Parity Init Task Error",            volumeNumber   },
    {512,  "Parity Init Medium Error Repaired", drp            },
    {517,  "Parity Init Forced Error Detected", dlm            },
    {1001, "Parity Init Task Started",          volumeNumber   },
    {1002, "Parity Init Task Completed",        volumeNumber   },
};

constexpr EventRow parityErrorEvents[] = {
    {1,   "Parity Error MQX Event",                 lwsem          },
    {4,   "Parity Error ENOMEM",                    nothing        },
    {5,   "Parity Error Extent Search Error",       volume         },
    {11,  "Parity Error Unexpected Error",          nothing        },
    {12,  "Parity Error Search VLBN Error",         isurp + volume },
    {13,  "Parity Error Invalid Param",             nothing        },
    {19,  "Parity Error Table Error",               isurp + sgtList},
    {511, "Parity Error Medium Error Unrepairable", drp            },
    {512, "Parity Error Medium Error Repaired",     drp            },
};

constexpr EventRow parityScanEvents[] = {
    {4,    "Parity Scan ENOMEM",                nothing        },
    {11,   "Parity Scan Unexpected Error",      nothing        },
    {19,   "Parity Scan Table Error",           isurp + sgtList},
    {25,   "Parity Scan Invalid ISURP",         isurp          },
    {505,  "Parity Scan Miscompare",            isurp          },
    {506,  "Parity Scan Task Error",            volumeNumber   },
    {512,  "Parity Scan Medium Error Repaired", drp            },
    {517,  "Parity Scan Forced Error Detected", dlm            },
    {518,  "Parity Scan Forced Error Detected", ndfe           },
    {1001, "Parity Scan Task Started",          volumeNumber   },
    {1002, "Parity Scan Task Completed",        volumeNumber   },
};

constexpr EventRow parityRebuildEvents[] = {
    {4,    "Parity Rebuild ENOMEM",                nothing        },
    {11,   "Parity Rebuild Unexpected Error",      nothing        },
    {16,   "Parity Rebuild DLM Search Error",      nothing        },
    {19,   "Parity Rebuild Table Error",           isurp + sgtList},
    {25,   "Parity Rebuild Invalid ISURP",         isurp          },
    {506,  "Parity Rebuild Task Error",            volumeNumber   },
    {512,  "Parity Rebuild Medium Error Repaired", isurp          }, // all other classes have drp
    {517,  "Parity Rebuild Forced Error Detected", dlm            },
    {1001, "Parity Rebuild Task Started",          volumeNumber   },
    {1002, "Parity Rebuild Task Completed",        volumeNumber   },
};

constexpr EventRow microRebuildEvents[] = {
    {3,    "Micro Rebuild Unrecognized Volume Type", volume         },
    {4,    "Micro Rebuild ENOMEM",                   nothing        },
    {5,    "Micro Rebuild Extent Search Error",      volume         },
    {11,   "Micro Rebuild Unexpected Error",         nothing        },
    {13,   "Micro Rebuild Invalid Param",            nothing        },
    {16,   "Micro Rebuild DLM Search Error",         nothing        },
    {19,   "Micro Rebuild Table Error",              isurp + sgtList},
    {25,   "Micro Rebuild Invalid ISURP",            isurp          },
    {26,   "Micro Rebuild Invalid DRP",              drp            },
    {506,  "Micro Rebuild Task Error",               volumeNumber   },
    {512,  "Micro Rebuild Medium Error Repaired",    drp            },
    {517,  "Micro Rebuild Forced Error Detected",    dlm            },
    {1001, "Micro Rebuild Task Started",             volumeNumber   },
    {1002, "Micro Rebuild Task Completed",           volumeNumber   },
};

constexpr EventRow volumeInitEvents[] = {
    {3,   "Volume Init Unrecognized Volume Type", volume      },
    {503, "Volume Init Max BG Tasks",             nothing     },
    {506, "Volume Init Task Error",               volumeNumber},
};

constexpr EventRow mmsgEvents[] = {
    {1,    "MMSG MQX Event",           lwsem  },
    {5,    "MMSG Extent Search Error", volume },
    {13,   "MMSG Invalid Param",       nothing},
    {26,   "MMSG Invalid DRP",         drp    },
    {27,   "MMSG Invalid MMSG",        mmsg   },
    {1003, "BG Change of State MMSG",  vbgt   },
};

constexpr EventRow rcpEvents[] = {
    {4,  "RCP ENOMEM",                   nothing},
    {19, "RCP Build Parity Table Error", isurp  },
    {25, "RCP Invalid ISURP",            isurp  },
    {28, "RCP Invalid VT",               volume },
    {29, "RCP Invalid RCD",              rcd    },
    {30, "RCP Invalid BCD",              bcd    },
};

constexpr EventRow feEvents[] = {
    {15,        "Force Error Failed to be Created", volume   },
    {501,       "Device Error: Max FEs Reached",    dib      },
    {509,       "Force Error Created",              fer + dlm},
    {511,       "Medium Error Unrepairable",        drp      },
    {517,       "Force Error Detected",             drp      },
    {anyNumber, "Force Error Unhandled Event",      nothing  },
};

constexpr EventRow carveEvents[] = {
    {anyNumber, "Carve Issue", sgtList},
};

constexpr EventRow bgSysEvents[] = {
    {1,   "BGSYS MQX Event",            lwsem  },
    {4,   "BGSYS ENOMEM",               nothing},
    {11,  "BGSYS Unexpected Error",     nothing},
    {13,  "BGSYS Invalid Param",        nothing},
    {25,  "BGSYS Invalid ISURP",        isurp  },
    {28,  "BGSYS Invalid VT",           volume },
    {29,  "BGSYS Invalid RCD",          rcd    },
    {30,  "BGSYS Invalid BCD",          bcd    },
    {31,  "BGSYS Invalid RBT",          rbt    },
    {503, "BGSYS MAX Background Tasks", nothing},
    {507, "BGSYS Invalid BTSN",         nothing},
};

constexpr EventRow macroEvents[] = {
    {anyNumber, "Macro MQX Event", lwsem},
};

constexpr EventRow assertEvents[] = {
    {anyNumber, "ASSERT Error", file},
};

constexpr EventClass classes[] = {
    {managerClass,       "I/O Manager Event",                  managerEvents      },
    {rebuildClass,       "Rebuild Task Event",                 rebuildEvents      },
    {reconfigClass,      "Reconfigure Task Event",             reconfigEvents     },
    {bbscanClass,        "Bad Block Scan Task Event",          bbscanEvents       },
    {xoeClass,           "XOR Engine Event",                   xoeEvents          },
    {errorRecoveryClass, "Error Recovery Event",               errorRecoveryEvents},
    {metadataClass,      "VMH Task Event",                     metadataEvents     },
    {isurpprocClass,     "ISURP ProcessEvent",                 isurpprocEvents    },
    {drpprocClass,       "DRP Process Event",                  drpprocEvents      },
    {bgClass,            "Background Task Event",              bgEvents           },
    {databaseClass,      "Database Event",                     databaseEvents     },
    {isrClass,           "ISR Event",                          isrEvents          },
    {startupClass,       "Startup Task Event",                 startupEvents      },
    {svClass,            "Storage Virtualization Event",       svEvents           },
    {dlmClass,           "Diskline Metadata Event",            dlmEvents          },
    {crcInitClass,       "CRC Initialize Task Event",          crcInitEvents      },
    {parityClass,        "Parity Volume Event",                parityEvents       },
    {parityInitClass,    "Parity Initialize Task Event",       parityInitEvents   },
    {parityErrorClass,   "Parity Error Task Event",            parityErrorEvents  },
    {parityScanClass,    "Parity Scan Task Event",             parityScanEvents   },
    {parityRebuildClass, "Parity Rebuild Task Event",          parityRebuildEvents},
    {microRebuildClass,  "Micro Rebuild Task Event",           microRebuildEvents },
    {volumeInitClass,    "Volume Initialize Task Event",       volumeInitEvents   },
    {mmsgClass,          "Management Message Event",           mmsgEvents         },
    {rcpClass,           "Redundant Controller Process Event", rcpEvents          },
    {feClass,            "Forced Error Event",                 feEvents           },
    {carveClass,         "Resource Carving Event",             carveEvents        },
    {bgSysClass,         "Background System Task Event",       bgSysEvents        },
    {macroClass,         "Macro Task Event",                   macroEvents        },
    {evlClass,           "EVL Event",                          evlEvents          },
    {assertClass,        "Resource Assert Event",              assertEvents       },
    {mathClass,          "Unknown Event",                      mathEvents         }, // none of its own
};
static_assert(classesRise(classes));

}  // namespace

std::optional<FoundClass> iomgrClassOf(std::uint32_t number) {
  return classOf(packedClasses<classes>(), number);
}

void writeFile(BodyWriter& body, const DataArea& data, NameBuffer& name) {
  writeEntry(body, "File", overwriteName(data, name));
}

}  // namespace mpuevent::iomgr
