#ifndef DECODERS_ISCSIMP_TABLES_H
#define DECODERS_ISCSIMP_TABLES_H

#include <string_view>

namespace mpuevent::iscsimp {

/// By event id.
constexpr std::string_view event_names[] = {
    "Radiation leak detected",  // 0: odd, and to be kept
    "Open Socket Request",      // 1
    "Close Socket",             // 2
    "Login",                    // 3
    "Open Socket Failure",      // 4
    "Close Socket Failure",     // 5
    "Login Failure",            // 6
    "Text Request Failure",     // 7
    "Internal Error",           // 8
    "Login Error",              // 9
};

constexpr std::string_view session_types[] = {
    "Invalid",    // 0
    "Discovery",  // 1
    "Normal",     // 2
};

/// By the stage codes of a login.
constexpr std::string_view stage_names[] = {
    "SecurityNegotiation",          // 0
    "LoginOperationalNegotiation",  // 1
    "Invalid (2)",                  // 2
    "FullFeaturePhase",             // 3
};

/// Each method has two codes.
constexpr std::string_view auth_methods[] = {
    "None",  // 0
    "None",  // 1
    "CHAP",  // 2
    "CHAP",  // 3
};

constexpr std::string_view close_reasons[] = {
    "Unknown",                                        // 0
    "Cold reset",                                     // 1
    "Close connection logout request",                // 2
    "Close session logout request",                   // 3
    "Remove connection for recovery logout request",  // 4
    "Login failure",                                  // 5
    "Protocol error reject",                          // 6
    "System Shutdown",                                // 7
    "Connection owned by reinstated session",         // 8
    "Login failure",                                  // 9: as 5
    "TCP reset",                                      // 10
    "TCP FIN",                                        // 11
    "Connection reinstatment",                        // 12: spelled so
    "Connection hardware error",                      // 13
    "Failed Reinstatement time out",                  // 14
};

constexpr std::string_view status_texts[] = {
    "Radiation leak detected",                        // 0: odd, and to be kept
    "Socket for close request not found",             // 1
    "Socket for login request not found",             // 2
    "Socket for text request not found",              // 3
    "Socket to open already opened",                  // 4
    "Socket Closed",                                  // 5
    "Socket Opened",                                  // 6
    "Portal to open not found",                       // 7
    "No more connections available",                  // 8
    "Login",                                          // 9
    "Expected parameter not received",                // 10
    "Answer not received for parameter offered",      // 11
    "Unexpected parameter received",                  // 12
    "Parameter received more than once",              // 13
    "Parameter with invalid numeric value",           // 14
    "Parameter less than minimum value",              // 15
    "Parameter greater than maximum value",           // 16
    "Parameter with invalid boolean value",           // 17
    "Illegal answer to AND parameter offered",        // 18
    "Illegal answer to OR parameter offered",         // 19
    "Illegal answer to Min parameter offered",        // 20
    "Illegal answer to Max parameter offered",        // 21
    "Illegal answer to List parameter offered",       // 22
    "Non-negotiable List parameters offered",         // 23
    "Offered parameter rejected",                     // 24
    "Offered parameter not understood",               // 25
    "Continue and Transit bits both set in BHS",      // 26
    "Illegal starting current stage in BHS",          // 27
    "Incorrect current stage in BHS",                 // 28
    "Illegal next stage in BHS",                      // 29
    "Unsupported iSCSI version in BHS",               // 30
    "Incorrect CHAP response",                        // 31
    "Initiator does not have access",                 // 32
    "Initiator does not have access to target",       // 33
    "Target does not exist",                          // 34
    "Portal used not part of target's portal group",  // 35
    "Out of resource",                                // 36
    "FirstBurstLength exceeded MaxBurstLength",       // 37
    "Missing text key delimiter",                     // 38
    "Missing text value delimiter",                   // 39
    "Request too large",                              // 40
    "Continue and Final bits both set",               // 41
    "Close listener request not found",               // 42
    "Close connections request not found",            // 43
    "Received unexpected message",                    // 44
    "Incorrect CHAP name",                            // 45
    "Parameter value not on binary boundary",         // 46
};

}  // namespace mpuevent::iscsimp

#endif
