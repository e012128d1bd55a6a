#ifndef MPUEVENT_TOOL_STORE_QUESTIONS_H
#define MPUEVENT_TOOL_STORE_QUESTIONS_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "store/ChoiceSql.h"
#include "store/Store.h"

namespace mpuevent::tool {

// What every engine is asked in the same words. Where a condition is given its texts are the
// parameters.

/// Records with file, index, offset and whether they could be decoded.
std::string recordsQuestion(const SqlCondition& condition, const Reading& reading);
/// At most `most` records that can be decoded anew, with file, index, offset and id, by id from
/// behind `lastId`.
std::string againQuestion(const SqlCondition& condition, std::uint64_t lastId, std::size_t most);

/// The columns of a StoredLog. What could not be decoded has empty serials and zeros.
inline constexpr char kLogsQuestion[] =
    "SELECT enclosure_serial, controller_serial, log_instance, min(sequence_id), max(sequence_id), "
    "count(*) FROM events WHERE NOT (enclosure_serial = '' AND controller_serial = '' AND "
    "log_instance = 0 AND sequence_id = 0) GROUP BY 1, 2, 3 ORDER BY 1, 2, 3";
/// The columns of a StoredGap.
inline constexpr char kGapsQuestion[] =
    "SELECT enclosure_serial, controller_serial, log_instance, after, before FROM gaps";

}  // namespace mpuevent::tool

#endif
