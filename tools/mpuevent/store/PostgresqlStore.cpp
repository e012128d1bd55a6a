#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "forms/TextBuffer.h"
#include "store/Engines.h"
#include "store/Libpq.h"
#include "store/PostgresqlText.h"
#include "store/Questions.h"
#include "store/Schemas.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kRowsAtOnce = 2000;
constexpr unsigned kPartitionBits = 22;  // of a timestamp, are within a partition
constexpr std::uint64_t kIdsOfBatch = std::uint64_t{1} << 20;  // more than its rows
constexpr std::size_t kPieceSize = std::size_t{1} << 16;
// Rows on their way.
constexpr char kIncoming[] =
    "SET work_mem = '64MB';"      // in which words are sorted into their index
    "SET temp_buffers = '64MB';"  // a batch is in memory
    "CREATE TEMPORARY TABLE incoming (LIKE events INCLUDING STORAGE INCLUDING COMPRESSION) "
    "ON COMMIT DELETE ROWS";
// "MPUE": held while a schema or a partition is made.
constexpr char kTakeTurns[] = "SELECT pg_advisory_xact_lock(1297110341)";

struct ClearResult {
  void operator()(PGresult* result) const { PQclear(result); }
};
struct CloseConnection {
  void operator()(PGconn* connection) const { PQfinish(connection); }
};

constexpr std::string_view kKnownAlready = "23505";
constexpr std::string_view kDeadlock = "40P01";

/// Another program came first.
class Conflict : public StoreError {
 public:
  explicit Conflict(const std::string& reason) : StoreError(reason, true) {}
};

/// Rows of an answer in the binary form.
class Rows {
 public:
  explicit Rows(PGresult* result) : result_(result) {}

  int count() const { return PQntuples(result_.get()); }
  bool isNull(int row, int column) const { return PQgetisnull(result_.get(), row, column) != 0; }
  std::span<const unsigned char> bytes(int row, int column) const {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): any bytes may be read as char.
    return {reinterpret_cast<const unsigned char*>(PQgetvalue(result_.get(), row, column)),
            static_cast<std::size_t>(PQgetlength(result_.get(), row, column))};
  }
  std::string_view text(int row, int column) const {
    return {PQgetvalue(result_.get(), row, column),
            static_cast<std::size_t>(PQgetlength(result_.get(), row, column))};
  }
  /// Of a bigint or a boolean.
  std::uint64_t number(int row, int column) const {
    std::uint64_t number = 0;
    for (const unsigned char byte : bytes(row, column)) number = number << 8 | byte;
    return number;
  }
  std::uint32_t word(int row, int column) const {
    return static_cast<std::uint32_t>(number(row, column));
  }
  /// From the columns file, index, offset.
  RecordPlace place(int row, int column) const {
    return {isNull(row, column) ? std::nullopt : std::optional<std::string_view>(text(row, column)),
            number(row, column + 1), number(row, column + 2)};
  }
  /// How many rows a command has changed.
  std::size_t changed() const {
    return static_cast<std::size_t>(std::strtoull(PQcmdTuples(result_.get()), nullptr, 10));
  }

 private:
  std::unique_ptr<PGresult, ClearResult> result_;
};

class Connection {
 public:
  explicit Connection(const std::string& target) : connection_(PQconnectdb(target.c_str())) {
    if (PQstatus(connection_.get()) != CONNECTION_OK) fail("");
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
    PQsetClientEncoding(connection_.get(), "UTF8");
    run("SET lock_timeout = '60s'");
  }

  /// One statement; numbers in its rows are read in the binary form.
  Rows ask(const std::string& sql, const std::vector<std::string>& texts = {}) {
    std::vector<const char*> values;
    values.reserve(texts.size());
    for (const std::string& text : texts) values.push_back(text.c_str());
    return take(PQexecParams(connection_.get(), sql.c_str(), static_cast<int>(values.size()),
                             nullptr, values.data(), nullptr, nullptr, 1));
  }
  /// Any number of statements.
  void run(const std::string& sql) { take(PQexec(connection_.get(), sql.c_str())); }

  /// Gives the rows of a question to `visit`, a part of them at a time. Within a transaction.
  template <typename Visit>
  void forEachRow(const std::string& question, const std::vector<std::string>& texts,
                  const Visit& visit) {
    ask("DECLARE chosen NO SCROLL CURSOR FOR " + question, texts);
    for (;;) {
      const Rows rows = ask("FETCH " + std::to_string(kRowsAtOnce) + " FROM chosen");
      for (int row = 0; row < rows.count(); ++row) visit(rows, row);
      if (rows.count() == 0) break;
    }
    run("CLOSE chosen");
  }

  void beginCopy(const std::string& sql) { take(PQexec(connection_.get(), sql.c_str())); }
  void copy(std::string_view piece) {
    if (PQputCopyData(connection_.get(), piece.data(), static_cast<int>(piece.size())) != 1) {
      fail("");
    }
  }
  void endCopy() {
    if (PQputCopyEnd(connection_.get(), nullptr) != 1) fail("");
    take(PQgetResult(connection_.get()));
    while (PGresult* const more = PQgetResult(connection_.get())) PQclear(more);
  }

  /// The server's, without a password.
  std::string name() const {
    const auto part = [](const char* text) { return std::string(text == nullptr ? "" : text); };
    return "postgresql://" + part(PQhost(connection_.get())) + ":" +
           part(PQport(connection_.get())) + "/" + part(PQdb(connection_.get()));
  }
  void rollBack() { PQclear(PQexec(connection_.get(), "ROLLBACK")); }

 private:
  Rows take(PGresult* result) {
    Rows rows(result);
    const ExecStatusType status = PQresultStatus(result);
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_COPY_IN) {
      return rows;
    }
    const char* const state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    fail(state == nullptr ? "" : state);
  }

  [[noreturn]] void fail(std::string_view state) const {
    std::string reason = PQerrorMessage(connection_.get());
    while (!reason.empty() && reason.back() == '\n') reason.pop_back();
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    if (state == "55P03") reason.insert(0, "locked by another program: ");
    if (state == kKnownAlready || state == kDeadlock) throw Conflict(name() + ": " + reason);
    // Lost connections, a full disk, locks, a server that stops, trouble with its files.
    constexpr std::array<std::string_view, 6> passing = {"08", "40", "53", "55P", "57P", "58"};
    const bool passes = PQstatus(connection_.get()) != CONNECTION_OK ||
                        std::any_of(passing.begin(), passing.end(), [state](std::string_view kind) {
                          return state.starts_with(kind);
                        });
    throw StoreError(name() + ": " + reason, passes);
  }

  std::unique_ptr<PGconn, CloseConnection> connection_;
};

/// Undone unless it is committed.
class Transaction {
 public:
  explicit Transaction(Connection& connection) : connection_(connection) {
    connection.run("BEGIN");
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction() {
    if (!done_) connection_.rollBack();
  }
  void commit() {
    connection_.run("COMMIT");
    done_ = true;
  }

 private:
  Connection& connection_;
  bool done_ = false;
};

std::string_view asText(std::span<const unsigned char> bytes) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): any bytes may be read as char.
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string listOf(std::string_view before = "", bool assigned = false) {
  std::string list;
  for (const std::string_view name : Batch::columns()) {
    const std::string column = '"' + std::string(name) + '"';
    if (!list.empty()) list += ", ";
    if (assigned) list += column + " = ";
    list += std::string(before) + column;
  }
  return list;
}

// The tables of an older version, out of the way.
constexpr char kSetAside[] = R"sql(
DROP VIEW IF EXISTS errors, gaps, modules_by_hour;
DROP FUNCTION IF EXISTS word(text);
CREATE SCHEMA older_store;
DO $$
DECLARE part regclass;
BEGIN
  FOR part IN SELECT inhrelid::regclass FROM pg_inherits WHERE inhparent = to_regclass('events') LOOP
    EXECUTE format('ALTER TABLE %s SET SCHEMA older_store', part);
  END LOOP;
END $$;
ALTER TABLE events SET SCHEMA older_store;
ALTER TABLE store_version SET SCHEMA older_store;
DROP SEQUENCE IF EXISTS events_id CASCADE;
)sql";

/// A row of a batch, the id that it has or is to have, and what it is known by.
struct Row {
  std::size_t place = 0;
  std::uint64_t id = 0;
  std::uint64_t timestamp = 0;
  std::span<const unsigned char> hash = {};

  auto key() const { return std::tuple(timestamp, asText(hash)); }
};

/// The rows with new ids that rise as the rows do, each once, in the order of their keys: whoever
/// stores the same events at the same time waits, and neither for the other.
std::vector<Row> newRows(const Batch& batch, std::uint64_t firstId) {
  const std::size_t timestamp = Batch::placeOf("timestamp");
  const std::size_t hash = Batch::placeOf("hash");
  std::vector<Row> rows;
  rows.reserve(batch.rows());
  for (std::size_t row = 0; row < batch.rows(); ++row) {
    rows.push_back({row, firstId + row, std::get<std::uint64_t>(batch.value(row, timestamp)),
                    std::get<std::span<const unsigned char>>(batch.value(row, hash))});
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const Row& a, const Row& b) { return a.key() < b.key(); });
  const auto isSame = [](const Row& a, const Row& b) { return a.key() == b.key(); };
  rows.erase(std::unique(rows.begin(), rows.end(), isSame), rows.end());
  return rows;
}

/// For every so many of what has a timestamp and a hash, from the first, whether it is stored.
template <typename Key>
std::vector<bool> known(Connection& connection, std::span<const Key> keys, std::size_t step) {
  std::array<ArrayText, 2> columns;
  for (std::size_t at = 0; at < keys.size(); at += step) {
    columns[0].add(std::uint64_t{keys[at].timestamp});
    columns[1].add(keys[at].hash);
  }
  // By way of EXISTS a server that has not counted its rows lately would read all of them.
  const Rows rows = connection.ask(
      "SELECT (SELECT true FROM events WHERE timestamp = a AND hash = b) IS NOT NULL FROM "
      "unnest($1::bigint[], $2::bytea[]) WITH ORDINALITY AS keys (a, b, place) ORDER BY place",
      {columns[0].take(), columns[1].take()});
  std::vector<bool> known(static_cast<std::size_t>(rows.count()));
  for (int row = 0; row < rows.count(); ++row) {
    known[static_cast<std::size_t>(row)] = rows.number(row, 0) != 0;
  }
  return known;
}

void copy(Connection& connection, const Batch& batch, std::span<const Row> rows,
          const std::string& table) {
  const std::size_t columns = Batch::columns().size();
  const std::size_t json = Batch::placeOf("fields");
  const std::array<std::size_t, 3> wordy = {Batch::placeOf("event_id"), Batch::placeOf("summary"),
                                            Batch::placeOf("body")};
  connection.beginCopy("COPY " + table + " (id, words, " + listOf() +
                       ") FROM STDIN (FORMAT binary)");
  TextBuffer piece;
  CopyText text(piece);
  text.begin();
  for (const Row& row : rows) {
    text.row(columns + 2);
    text(row.id);
    std::array<std::string_view, 3> texts;
    for (std::size_t at = 0; at < texts.size(); ++at) {
      const StoreValue value = batch.value(row.place, wordy[at]);
      if (std::holds_alternative<std::string_view>(value))
        texts[at] = std::get<std::string_view>(value);
    }
    text.words(texts);
    for (std::size_t column = 0; column < columns; ++column) {
      const StoreValue value = batch.value(row.place, column);
      if (column == json && std::holds_alternative<std::string_view>(value)) {
        text.json(std::get<std::string_view>(value));
      } else {
        std::visit(text, value);
      }
    }
    if (piece.size() < kPieceSize) continue;
    connection.copy(piece.view());
    piece.clear();
  }
  text.end();
  connection.copy(piece.view());
  connection.endCopy();
}

// Straight into the table, which takes the server half as long as the long way: through a temporary
// table, without those that another program stores at the same time.
std::size_t insert(Connection& connection, const Batch& batch, std::span<const Row> rows) {
  connection.run("SAVEPOINT before");
  try {
    copy(connection, batch, rows, "events");
    return rows.size();
  } catch (const Conflict&) {
    connection.run("ROLLBACK TO before");
  }
  copy(connection, batch, rows, "incoming");
  return connection
      .ask("INSERT INTO events (id, words, " + listOf() + ") SELECT id, words, " + listOf() +
           " FROM incoming ORDER BY timestamp, hash ON CONFLICT DO NOTHING")
      .changed();
}

class PostgresqlStore final : public Store {
 public:
  PostgresqlStore(const std::string& target, StoreAccess access) : connection_(target) {
    if (access == StoreAccess::write) {
      openToWrite();
    } else if (version() < kPostgresqlVersion) {
      refuse("no store, or one of an older version, which 'mpuevent store' makes one of this");
    }
  }

  void takeTurn() override;
  std::size_t put(const Batch& batch) override;
  void read(const log::Choice& choice, const Reading& reading,
            const std::function<void(const StoredRecord&)>& visit) override;
  std::vector<bool> has(std::span<const RecordKey> keys) override;
  void forEachLog(const std::function<void(const StoredLog&)>& visit) override;
  void forEachGap(const std::function<void(const StoredGap&)>& visit) override;
  std::uint64_t decodeAgain(const log::Choice& choice,
                            const std::function<void(std::uint64_t)>& progress) override;

 private:
  [[noreturn]] void refuse(const std::string& reason) const {
    throw StoreError(connection_.name() + ": " + reason);
  }
  std::uint64_t version();
  void openToWrite();
  void makeSchema();
  void migrate();
  std::uint64_t nextId();
  void dropKnown(std::vector<Row>& rows);
  std::vector<std::uint64_t> missingPartitions(const Batch& batch) const;
  void makePartitions(std::span<const std::uint64_t> missing);

  Connection connection_;
  std::optional<std::uint64_t> turn_;   // of the next batch, if it was taken
  std::set<std::uint64_t> partitions_;  // that are known to be there
};

// 0 if there is none. Throws unless this is a store, of this version or an older one, or empty.
std::uint64_t PostgresqlStore::version() {
  const Rows tables = connection_.ask(
      "SELECT to_regclass('store_version') IS NOT NULL, to_regclass('events') IS NOT NULL");
  if (tables.number(0, 0) == 0) {
    if (tables.number(0, 1) == 0) return 0;
    refuse("not a store, but a database with a table \"events\" of another program");
  }
  const std::uint64_t version =
      connection_.ask("SELECT coalesce(max(version), 0) FROM store_version").number(0, 0);
  if (version > kPostgresqlVersion) {
    refuse("its schema is version " + std::to_string(version) + ", this program knows up to " +
           std::to_string(kPostgresqlVersion) + "; use a newer mpuevent");
  }
  return version;
}

void PostgresqlStore::openToWrite() {
  Transaction transaction(connection_);
  connection_.run(kTakeTurns);
  if (version() == kPostgresqlVersion) {
    connection_.run(kIncoming);
  } else if (connection_.ask("SELECT to_regclass('events') IS NULL").number(0, 0) != 0) {
    makeSchema();
  } else {
    migrate();
  }
  transaction.commit();
  partitions_.clear();  // one that was made may have been undone
}

void PostgresqlStore::makeSchema() {
  connection_.run(kPostgresqlSchema);
  connection_.run("INSERT INTO store_version VALUES (" + std::to_string(kPostgresqlVersion) + ")");
  connection_.run(kIncoming);
}

// As in the SQLite store: the records are all that a store is made of.
void PostgresqlStore::migrate() {
  connection_.run(kSetAside);
  makeSchema();
  Batch batch;
  const auto store = [&] {
    makePartitions(missingPartitions(batch));
    insert(connection_, batch, newRows(batch, nextId()));
    connection_.run("TRUNCATE incoming");
    batch.clear();
  };
  connection_.forEachRow(
      "SELECT record, file, \"index\", \"offset\", reason FROM older_store.events ORDER BY id", {},
      [&](const Rows& rows, int row) {
        batch.addStored(rows.bytes(row, 0), rows.place(row, 1), rows.text(row, 4));
        if (batch.rows() == kRowsAtOnce) store();
      });
  store();
  connection_.run("DROP SCHEMA older_store CASCADE");
}

std::vector<std::uint64_t> PostgresqlStore::missingPartitions(const Batch& batch) const {
  const std::size_t timestamp = Batch::placeOf("timestamp");
  std::set<std::uint64_t> missing;
  for (std::size_t row = 0; row < batch.rows(); ++row) {
    const std::uint64_t partition =
        std::get<std::uint64_t>(batch.value(row, timestamp)) >> kPartitionBits;
    if (!partitions_.contains(partition)) missing.insert(partition);
  }
  return {missing.begin(), missing.end()};
}

// Within a transaction. To attach a table does not wait for those who read or write.
void PostgresqlStore::makePartitions(std::span<const std::uint64_t> missing) {
  if (missing.empty()) return;
  connection_.run(kTakeTurns);
  for (const std::uint64_t partition : missing) {
    const std::string name = "events_" + std::to_string(partition);
    if (connection_.ask("SELECT to_regclass('" + name + "') IS NULL").number(0, 0) != 0) {
      connection_.run("CREATE TABLE " + name + " (LIKE events INCLUDING ALL)");
      connection_.run("ALTER TABLE events ATTACH PARTITION " + name + " FOR VALUES FROM (" +
                      std::to_string(partition << kPartitionBits) + ") TO (" +
                      std::to_string((partition + 1) << kPartitionBits) + ")");
    }
  }
  partitions_.insert(missing.begin(), missing.end());
}

void PostgresqlStore::takeTurn() {
  turn_ = connection_.ask("SELECT nextval('events_id')").number(0, 0);
}

// Of the next batch's first event.
std::uint64_t PostgresqlStore::nextId() {
  if (!turn_) takeTurn();
  return *std::exchange(turn_, std::nullopt) * kIdsOfBatch;
}

// Events that come again come many at a time: to ask for some of them tells whether to ask for all.
void PostgresqlStore::dropKnown(std::vector<Row>& rows) {
  constexpr std::size_t step = 16;
  const std::span<const Row> all = rows;
  const std::vector<bool> some = known(connection_, all, step);
  if (std::find(some.begin(), some.end(), true) == some.end()) return;
  const std::vector<bool> isKnown = known(connection_, all, 1);
  std::size_t left = 0;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    if (!isKnown[row]) rows[left++] = rows[row];
  }
  rows.resize(left);
}

std::size_t PostgresqlStore::put(const Batch& batch) {
  if (const std::vector<std::uint64_t> missing = missingPartitions(batch); !missing.empty()) {
    Transaction transaction(connection_);
    makePartitions(missing);
    transaction.commit();
  }
  std::vector<Row> rows = newRows(batch, nextId());
  dropKnown(rows);
  if (rows.empty()) return 0;
  Transaction transaction(connection_);
  const std::size_t added = insert(connection_, batch, rows);
  transaction.commit();
  return added;
}

void PostgresqlStore::read(const log::Choice& choice, const Reading& reading,
                           const std::function<void(const StoredRecord&)>& visit) {
  const SqlCondition condition = conditionOf(choice);
  Transaction transaction(connection_);
  connection_.forEachRow(
      recordsQuestion(condition, reading), condition.texts, [&visit](const Rows& rows, int row) {
        const RecordPlace place = rows.place(row, 1);
        visit(
            {rows.bytes(row, 0), place.file, place.index, place.offset, rows.number(row, 4) != 0});
      });
}

std::vector<bool> PostgresqlStore::has(std::span<const RecordKey> keys) {
  return known(connection_, keys, 1);
}

void PostgresqlStore::forEachLog(const std::function<void(const StoredLog&)>& visit) {
  Transaction transaction(connection_);
  connection_.forEachRow(kLogsQuestion, {}, [&visit](const Rows& rows, int row) {
    visit({std::string(rows.text(row, 0)), std::string(rows.text(row, 1)), rows.word(row, 2),
           rows.word(row, 3), rows.word(row, 4), rows.number(row, 5)});
  });
}

void PostgresqlStore::forEachGap(const std::function<void(const StoredGap&)>& visit) {
  Transaction transaction(connection_);
  connection_.forEachRow(kGapsQuestion, {}, [&visit](const Rows& rows, int row) {
    visit({std::string(rows.text(row, 0)), std::string(rows.text(row, 1)), rows.word(row, 2),
           rows.word(row, 3), rows.word(row, 4)});
  });
}

std::uint64_t PostgresqlStore::decodeAgain(const log::Choice& choice,
                                           const std::function<void(std::uint64_t)>& progress) {
  const SqlCondition condition = conditionOf(choice);
  std::uint64_t last = 0;
  for (std::uint64_t decoded = 0;;) {
    Transaction transaction(connection_);
    const Rows rows = connection_.ask(againQuestion(condition, last, kRowsAtOnce), condition.texts);
    if (rows.count() == 0) return decoded;
    Batch batch;
    std::vector<Row> ids;
    for (int row = 0; row < rows.count(); ++row) {
      ids.push_back({.place = batch.rows(), .id = rows.number(row, 4)});
      batch.add(rows.bytes(row, 0), rows.place(row, 1));
    }
    copy(connection_, batch, ids, "incoming");
    connection_.run("UPDATE events SET words = incoming.words, " + listOf("incoming.", true) +
                    " FROM incoming WHERE events.id = incoming.id AND "
                    "events.timestamp = incoming.timestamp");
    transaction.commit();
    last = ids.back().id;
    progress(decoded += ids.size());
  }
}

}  // namespace

std::unique_ptr<Store> openPostgresqlStore(const std::string& target, StoreAccess access) {
  if (const std::string reason = libpq.load(); !reason.empty()) {
    throw StoreError("PostgreSQL needs libpq: " + reason);
  }
  return std::make_unique<PostgresqlStore>(target, access);
}

}  // namespace mpuevent::tool
