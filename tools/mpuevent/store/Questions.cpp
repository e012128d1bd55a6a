#include "store/Questions.h"

#include "store/Batch.h"

namespace mpuevent::tool {

namespace {

constexpr char kPlace[] = "SELECT record, file, \"index\", \"offset\"";

}  // namespace

std::string recordsQuestion(const SqlCondition& condition, const Reading& reading) {
  std::string question =
      std::string(kPlace) + ", reason IS NULL FROM events WHERE " + condition.sql;
  if (reading.last) {
    const std::string decoded = condition.sql + " AND reason IS NULL";
    question += " AND reason IS NULL AND id >= (SELECT min(id) FROM (SELECT id FROM events WHERE " +
                decoded + " ORDER BY id DESC LIMIT " + std::to_string(*reading.last) +
                ") AS newest)";
  }
  return question +
         (reading.order == Reading::asStored
              ? " ORDER BY id"
              : " ORDER BY enclosure_serial, controller_serial, log_instance, sequence_id");
}

std::string againQuestion(const SqlCondition& condition, std::uint64_t lastId, std::size_t most) {
  return std::string(kPlace) + ", id FROM events WHERE " + condition.sql +
         " AND coalesce(reason, '') NOT LIKE '" + std::string(Batch::noRecord) + "%' AND id > " +
         std::to_string(lastId) + " ORDER BY id LIMIT " + std::to_string(most);
}

}  // namespace mpuevent::tool
