#ifndef Pegasus_Linkage_h
#define Pegasus_Linkage_h

#define PEGASUS_EXPORT __attribute__((visibility("default")))
#define PEGASUS_IMPORT __attribute__((visibility("default")))
#define PEGASUS_HIDDEN_LINKAGE __attribute__((visibility("hidden")))

/// Part of the name of all that is declared with it, and of every function that takes or returns
/// such a class: what is compiled for the stand-in does not link with the real OpenPegasus, whose
/// classes of the same names are laid out differently.
#define PEGASUS_STANDIN_ABI __attribute__((abi_tag("pegasus_standin")))

#define PEGASUS_COMMON_LINKAGE PEGASUS_EXPORT PEGASUS_STANDIN_ABI
#define PEGASUS_PROVIDER_LINKAGE PEGASUS_EXPORT PEGASUS_STANDIN_ABI

#endif
