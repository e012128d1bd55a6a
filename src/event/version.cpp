#include <MPUEvent/Version.h>

const char* mpuevent_version() { return MPUEVENT_VERSION; }
