#ifndef DECODERS_ISCSIMP_TABLES_H
#define DECODERS_ISCSIMP_TABLES_H

#include "event/Codes.h"
#include "event/Tables.h"

namespace mpuevent::iscsimp {

/// What is shown for a code that its table does not have: "Unknown (17)".
inline constexpr Fallback unknownCode = {"Unknown (", ")"};

/// By event id.
inline constexpr CodeText event_names[] = {
    {0, "Radiation leak detected"}, // odd, but required
    {1, "Open Socket Request"    },
    {2, "Close Socket"           },
    {3, "Login"                  },
    {4, "Open Socket Failure"    },
    {5, "Close Socket Failure"   },
    {6, "Login Failure"          },
    {7, "Text Request Failure"   },
    {8, "Internal Error"         },
    {9, "Login Error"            },
};

inline constexpr CodeText session_types[] = {
    {0, "Invalid"  },
    {1, "Discovery"},
    {2, "Normal"   },
};

/// By the two bits of a login's stage.
inline constexpr CodeText stage_names[] = {
    {0, "SecurityNegotiation"        },
    {1, "LoginOperationalNegotiation"},
    {2, "Invalid (2)"                },
    {3, "FullFeaturePhase"           },
};

/// By the code of a method. Two codes each have the same words.
inline constexpr CodeText auth_methods[] = {
    {0, "None"},
    {1, "None"},
    {2, "CHAP"},
    {3, "CHAP"},
};

inline constexpr CodeText close_reasons[] = {
    {0,  "Unknown"                                      },
    {1,  "Cold reset"                                   },
    {2,  "Close connection logout request"              },
    {3,  "Close session logout request"                 },
    {4,  "Remove connection for recovery logout request"},
    {5,  "Login failure"                                },
    {6,  "Protocol error reject"                        },
    {7,  "System Shutdown"                              },
    {8,  "Connection owned by reinstated session"       },
    {9,  "Login failure"                                }, // the same words as 5
    {10, "TCP reset"                                    },
    {11, "TCP FIN"                                      },
    {12, "Connection reinstatment"                      }, // spelled so
    {13, "Connection hardware error"                    },
    {14, "Failed Reinstatement time out"                },
};

inline constexpr CodeText status_texts[] = {
    {0,  "Radiation leak detected"                      }, // odd, but required
    {1,  "Socket for close request not found"           },
    {2,  "Socket for login request not found"           },
    {3,  "Socket for text request not found"            },
    {4,  "Socket to open already opened"                },
    {5,  "Socket Closed"                                },
    {6,  "Socket Opened"                                },
    {7,  "Portal to open not found"                     },
    {8,  "No more connections available"                },
    {9,  "Login"                                        },
    {10, "Expected parameter not received"              },
    {11, "Answer not received for parameter offered"    },
    {12, "Unexpected parameter received"                },
    {13, "Parameter received more than once"            },
    {14, "Parameter with invalid numeric value"         },
    {15, "Parameter less than minimum value"            },
    {16, "Parameter greater than maximum value"         },
    {17, "Parameter with invalid boolean value"         },
    {18, "Illegal answer to AND parameter offered"      },
    {19, "Illegal answer to OR parameter offered"       },
    {20, "Illegal answer to Min parameter offered"      },
    {21, "Illegal answer to Max parameter offered"      },
    {22, "Illegal answer to List parameter offered"     },
    {23, "Non-negotiable List parameters offered"       },
    {24, "Offered parameter rejected"                   },
    {25, "Offered parameter not understood"             },
    {26, "Continue and Transit bits both set in BHS"    },
    {27, "Illegal starting current stage in BHS"        },
    {28, "Incorrect current stage in BHS"               },
    {29, "Illegal next stage in BHS"                    },
    {30, "Unsupported iSCSI version in BHS"             },
    {31, "Incorrect CHAP response"                      },
    {32, "Initiator does not have access"               },
    {33, "Initiator does not have access to target"     },
    {34, "Target does not exist"                        },
    {35, "Portal used not part of target's portal group"},
    {36, "Out of resource"                              },
    {37, "FirstBurstLength exceeded MaxBurstLength"     },
    {38, "Missing text key delimiter"                   },
    {39, "Missing text value delimiter"                 },
    {40, "Request too large"                            },
    {41, "Continue and Final bits both set"             },
    {42, "Close listener request not found"             },
    {43, "Close connections request not found"          },
    {44, "Received unexpected message"                  },
    {45, "Incorrect CHAP name"                          },
    {46, "Parameter value not on binary boundary"       },
};

}  // namespace mpuevent::iscsimp

#endif
