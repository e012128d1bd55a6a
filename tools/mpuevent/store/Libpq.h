#ifndef MPUEVENT_TOOL_STORE_LIBPQ_H
#define MPUEVENT_TOOL_STORE_LIBPQ_H

#include <libpq-fe.h>

#include "log/input/LazyLibrary.h"

namespace mpuevent::tool {

/// The client of PostgreSQL: for PostgresqlStore.cpp alone.
inline constinit log::LazyLibrary libpq(MPUEVENT_LIBPQ);

// What is called of it; without its row here a function does not link.
#define LIBPQ_FUNCTION(name) \
  inline constinit const log::LazyFunction<decltype(::name)> name(libpq, #name)
LIBPQ_FUNCTION(PQclear);
LIBPQ_FUNCTION(PQcmdTuples);
LIBPQ_FUNCTION(PQconnectdb);
LIBPQ_FUNCTION(PQdb);
LIBPQ_FUNCTION(PQerrorMessage);
LIBPQ_FUNCTION(PQexec);
LIBPQ_FUNCTION(PQexecParams);
LIBPQ_FUNCTION(PQfinish);
LIBPQ_FUNCTION(PQgetResult);
LIBPQ_FUNCTION(PQgetisnull);
LIBPQ_FUNCTION(PQgetlength);
LIBPQ_FUNCTION(PQgetvalue);
LIBPQ_FUNCTION(PQhost);
LIBPQ_FUNCTION(PQntuples);
LIBPQ_FUNCTION(PQport);
LIBPQ_FUNCTION(PQputCopyData);
LIBPQ_FUNCTION(PQputCopyEnd);
LIBPQ_FUNCTION(PQresultErrorField);
LIBPQ_FUNCTION(PQresultStatus);
LIBPQ_FUNCTION(PQsetClientEncoding);
LIBPQ_FUNCTION(PQsetNoticeProcessor);
LIBPQ_FUNCTION(PQstatus);
#undef LIBPQ_FUNCTION

}  // namespace mpuevent::tool

#endif
