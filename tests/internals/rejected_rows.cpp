// Compiled by tests, once for each REJECTED; only 0 compiles.
#include "event/Codes.h"
#include "event/Fields.h"

using namespace mpuevent;

#if REJECTED == 0
constexpr Field rows[] = {
    {"Key", 2, Width::u32, Format::dec}
};
constexpr Layout layout = {6, packed<rows>};
constexpr CodeText texts[] = {
    {1, "one"},
    {2, "two"}
};
#elif REJECTED == 1
constexpr Field rows[] = {
    {"Key", 0, Width::u64, Format::hexUpper8}
};
#elif REJECTED == 2
constexpr Field rows[] = {
    {"Key", 0, Width::wordPair, Format::dec}
};
#elif REJECTED == 3
constexpr Field rows[] = {
    {"Key", 2, Width::u32, Format::dec}
};
constexpr Layout layout = {5, packed<rows>};
#elif REJECTED == 4
constexpr CodeText texts[] = {
    {2, "two"},
    {2, "two"}
};
#endif

#if REJECTED == 0 || REJECTED == 4
constexpr CodeTable table = packed<texts>;
#endif
