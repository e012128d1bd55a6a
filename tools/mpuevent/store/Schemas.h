#ifndef MPUEVENT_TOOL_STORE_SCHEMAS_H
#define MPUEVENT_TOOL_STORE_SCHEMAS_H

namespace mpuevent::tool {

// The schema files, each as one text.
extern const char* const kSqliteSchema;
extern const char* const kPostgresqlSchema;

/// Of the schemas. A store of a newer one is refused, one of an older one is migrated.
inline constexpr int kSqliteVersion = 2;
inline constexpr int kPostgresqlVersion = 3;

}  // namespace mpuevent::tool

#endif
