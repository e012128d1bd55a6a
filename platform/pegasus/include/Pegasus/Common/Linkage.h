#ifndef Pegasus_Linkage_h
#define Pegasus_Linkage_h

#define PEGASUS_EXPORT __attribute__((visibility("default")))
#define PEGASUS_IMPORT __attribute__((visibility("default")))
#define PEGASUS_HIDDEN_LINKAGE __attribute__((visibility("hidden")))

#define PEGASUS_COMMON_LINKAGE PEGASUS_EXPORT
#define PEGASUS_PROVIDER_LINKAGE PEGASUS_EXPORT

#endif
