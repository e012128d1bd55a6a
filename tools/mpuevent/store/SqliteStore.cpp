#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <string>
#include <system_error>

#include "store/Engines.h"
#include "store/Questions.h"
#include "store/Schemas.h"

namespace mpuevent::tool {

namespace {

constexpr int kApplicationId = 0x4D505545;  // "MPUE"
constexpr int kWaitForLock = 60000;         // milliseconds; writers take turns as it happens
constexpr std::size_t kRowsAtOnce = 2000;

// Each commit is on the disk when it returns (FULL), as what has been stored may be deleted where
// it came from; with batches of thousands that costs little. The log of a batch is not copied back
// into the file before it is some 64 MB.
// Rows of some 2 KB want large pages; words are merged as they come in, 16 MB at a time.
constexpr char kFormat[] =
    "PRAGMA page_size = 16384;"
    "PRAGMA journal_mode = WAL;";
constexpr char kSettings[] =
    "PRAGMA synchronous = FULL;"
    "PRAGMA secure_delete = OFF;"  // to overwrite pages that words have left is work for nothing
    "PRAGMA cache_size = -32768;"
    "PRAGMA temp_store = FILE;"
    "PRAGMA wal_autocheckpoint = 4096;";

constexpr std::array<std::string_view, 3> kWordColumns = {"event_id", "summary", "body"};

std::string quoted(std::string_view name) { return '"' + std::string(name) + '"'; }

std::string listOf(std::span<const std::string_view> names, std::string_view behind) {
  std::string list;
  for (const std::string_view name : names) {
    if (!list.empty()) list += ", ";
    list += quoted(name) + std::string(behind);
  }
  return list;
}

std::vector<std::size_t> placesOf(std::span<const std::string_view> names) {
  std::vector<std::size_t> places;
  for (const std::string_view name : names) places.push_back(Batch::placeOf(name));
  return places;
}

// Of a code and the error of the system behind it; empty if SQLite's own words do.
std::string reasonOf(int kind, int cause) {
  constexpr char runAgain[] = "; what was stored before is safe, the same again stores the rest";
  if (kind == SQLITE_NOTADB) return "not a store, and no SQLite database at all";
  if (kind == SQLITE_READONLY) {
    return "it may not be written, or its -wal and -shm may not be made beside it, which reading "
           "takes, too";
  }
  if (kind == SQLITE_FULL || cause == ENOSPC || cause == EDQUOT) {
    return std::string("there is no space left on its disk") + runAgain;
  }
  if (cause == EFBIG) {
    return std::string("larger than its file system or 'ulimit -f' lets files be") + runAgain;
  }
  return {};
}

/// Says what went wrong with the database `path`.
[[noreturn]] void fail(const std::string& path, sqlite3* database, int code) {
  const int lastError = errno;
  const int kind = code & 0xFF;
  if (kind == SQLITE_BUSY || kind == SQLITE_LOCKED) {
    throw StoreError(path + ": locked by another program", true);
  }
  int cause = 0;
  if (kind == SQLITE_IOERR || kind == SQLITE_CANTOPEN) {
    if (database != nullptr) cause = sqlite3_system_errno(database);
    if (cause == 0) cause = lastError;  // it forgets some
  }
  std::string reason = reasonOf(kind, cause);
  if (reason.empty()) {
    reason = database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code);
    if (cause != 0) reason += ": " + std::generic_category().message(cause);
  }
  throw StoreError(path + ": " + reason, kind == SQLITE_FULL || kind == SQLITE_IOERR);
}

/// A prepared statement.
class Statement {
 public:
  Statement(const std::string& path, sqlite3* database, const std::string& sql)
      : path_(path), database_(database) {
    const int code = sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &statement_, nullptr);
    if (code != SQLITE_OK) fail(path, database, code);
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(statement_); }

  // Parameters from 1. What is bound must last until the statement has run.
  void bind(int at, std::uint64_t number) {
    check(sqlite3_bind_int64(statement_, at, static_cast<sqlite3_int64>(number)));
  }
  void bind(int at, std::string_view text) {
    // A null pointer would be NULL.
    const char* const begin = text.data() == nullptr ? "" : text.data();
    check(sqlite3_bind_text64(statement_, at, begin, text.size(), SQLITE_STATIC, SQLITE_UTF8));
  }
  void bind(int at, std::span<const unsigned char> bytes) {
    const void* const begin = bytes.data() == nullptr ? "" : static_cast<const void*>(bytes.data());
    check(sqlite3_bind_blob64(statement_, at, begin, bytes.size(), SQLITE_STATIC));
  }
  void bind(int at, std::monostate) { check(sqlite3_bind_null(statement_, at)); }
  void bind(int first, const Batch& batch, std::size_t row, std::span<const std::size_t> columns) {
    for (const std::size_t column : columns) {
      std::visit([this, first](auto value) { bind(first, value); }, batch.value(row, column));
      ++first;
    }
  }

  /// Whether there is a row.
  bool step() {
    const int code = sqlite3_step(statement_);
    if (code == SQLITE_ROW || code == SQLITE_DONE) return code == SQLITE_ROW;
    sqlite3_reset(statement_);
    fail(path_, database_, code);
  }
  void reset() { sqlite3_reset(statement_); }
  void run() {
    step();
    reset();
  }

  // Columns from 0, valid until the next step.
  std::uint64_t number(int column) const {
    return static_cast<std::uint64_t>(sqlite3_column_int64(statement_, column));
  }
  std::uint32_t word(int column) const { return static_cast<std::uint32_t>(number(column)); }
  bool isNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
  std::span<const unsigned char> bytes(int column) const {
    const void* const begin = sqlite3_column_blob(statement_, column);
    return {static_cast<const unsigned char*>(begin),
            static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
  }
  std::string_view text(int column) const {
    const std::span<const unsigned char> utf8 = bytes(column);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): any bytes may be read as char.
    return {reinterpret_cast<const char*>(utf8.data()), utf8.size()};
  }

 private:
  void check(int code) {
    if (code != SQLITE_OK) fail(path_, database_, code);
  }

  const std::string& path_;
  sqlite3* database_;
  sqlite3_stmt* statement_ = nullptr;
};

void bindTexts(Statement& statement, const SqlCondition& condition) {
  for (std::size_t at = 0; at < condition.texts.size(); ++at) {
    statement.bind(static_cast<int>(at) + 1, std::string_view(condition.texts[at]));
  }
}

/// From the columns file, index, offset.
RecordPlace placeIn(const Statement& row, int first) {
  return {row.isNull(first) ? std::nullopt : std::optional<std::string_view>(row.text(first)),
          row.number(first + 1), row.number(first + 2)};
}

class SqliteStore : public Store {
 public:
  SqliteStore(const std::string& path, StoreAccess access) : path_(path) {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX |
                      (access == StoreAccess::write ? SQLITE_OPEN_CREATE : 0);
    // A lock for counting memory, at each allocation, is of no use here.
    static const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    static_cast<void>(uncounted);
    sqlite3* database = nullptr;
    // ":memory:" and "" would be gone with the program.
    if (path.empty()) throw StoreError("a store needs a name");
    const std::string name = path.front() == ':' ? "./" + path : path;
    const int code = sqlite3_open_v2(name.c_str(), &database, flags, nullptr);
    database_.reset(database);
    if (code != SQLITE_OK) fail(path_, database, code);
    sqlite3_extended_result_codes(database, 1);
    sqlite3_busy_timeout(database, kWaitForLock);
    if (access == StoreAccess::write) {
      openToWrite();
    } else if (version() < kSqliteVersion) {
      throw StoreError(path_ + ": of an older version; 'mpuevent store " + path_ +
                       " --again' makes it one of this");
    }
  }

  std::size_t put(const Batch& batch) override;
  void read(const log::Choice& choice, const Reading& reading,
            const std::function<void(const StoredRecord&)>& visit) override;
  std::vector<bool> has(std::span<const RecordKey> keys) override;
  void forEachLog(const std::function<void(const StoredLog&)>& visit) override;
  void forEachGap(const std::function<void(const StoredGap&)>& visit) override;
  std::uint64_t decodeAgain(const log::Choice& choice,
                            const std::function<void(std::uint64_t)>& progress) override;

 private:
  struct Close {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  /// Undone unless it is committed.
  class Transaction {
   public:
    explicit Transaction(SqliteStore& store) : store_(store) { store.run("BEGIN IMMEDIATE"); }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
      if (!done_) sqlite3_exec(store_.database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    void commit() {
      store_.run("COMMIT");
      done_ = true;
    }

   private:
    SqliteStore& store_;
    bool done_ = false;
  };

  Statement statement(const std::string& sql) { return {path_, database_.get(), sql}; }
  void run(const std::string& sql) {
    const int code = sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) fail(path_, database_.get(), code);
  }
  std::uint64_t number(const std::string& sql) {
    Statement question = statement(sql);
    return question.step() ? question.number(0) : 0;
  }

  bool isEmpty() {
    return number("PRAGMA user_version") == 0 && number("PRAGMA application_id") == 0 &&
           number("SELECT count(*) FROM sqlite_schema") == 0;
  }
  void makeSchema();
  std::uint64_t version();
  void openToWrite();
  void migrate();
  std::size_t insert(const Batch& batch);
  void replace(std::span<const std::uint64_t> ids, const Batch& batch);

  const std::string path_;
  std::unique_ptr<sqlite3, Close> database_;
  std::unique_ptr<Statement> insert_;
  std::unique_ptr<Statement> insertWords_;
};

void SqliteStore::makeSchema() {
  run(kSqliteSchema);
  run("PRAGMA application_id = " + std::to_string(kApplicationId));
  run("PRAGMA user_version = " + std::to_string(kSqliteVersion));
}

// Throws unless this is a store, of this version or an older one.
std::uint64_t SqliteStore::version() {
  if (number("PRAGMA application_id") != kApplicationId) {
    throw StoreError(path_ + ": not a store, but an SQLite database of another program");
  }
  const std::uint64_t version = number("PRAGMA user_version");
  if (version > kSqliteVersion) {
    throw StoreError(path_ + ": its schema is version " + std::to_string(version) +
                     ", this program knows up to " + std::to_string(kSqliteVersion) +
                     "; use a newer mpuevent");
  }
  return version;
}

void SqliteStore::openToWrite() {
  // Two programs may begin the same store.
  if (isEmpty()) run(kFormat);
  Transaction transaction(*this);
  if (isEmpty()) {
    makeSchema();
  } else if (version() < kSqliteVersion) {
    migrate();
  }
  transaction.commit();
  run(kSettings);
}

// Everything that a store is made of can be made of its records anew, so an older one needs no
// steps from version to version: of it no more is asked than the columns that say where a record is
// from, and that it is one.
void SqliteStore::migrate() {
  run("DROP TABLE IF EXISTS words");
  for (const std::string type : {"view", "trigger", "index"}) {
    std::vector<std::string> names;
    Statement known =
        statement("SELECT name FROM sqlite_schema WHERE sql IS NOT NULL AND type = '" + type + "'");
    while (known.step()) names.emplace_back(known.text(0));
    for (const std::string& name : names) run("DROP " + type + " " + quoted(name));
  }
  run("ALTER TABLE events RENAME TO older_events");
  makeSchema();
  {
    Statement rows = statement(
        "SELECT record, file, \"index\", \"offset\", reason FROM older_events ORDER BY rowid");
    Batch batch;
    while (rows.step()) {
      batch.addStored(rows.bytes(0), placeIn(rows, 1), rows.text(4));
      if (batch.rows() < kRowsAtOnce) continue;
      insert(batch);
      batch.clear();
    }
    insert(batch);
  }
  run("DROP TABLE older_events");
}

std::size_t SqliteStore::put(const Batch& batch) {
  Transaction transaction(*this);
  const std::size_t added = insert(batch);
  transaction.commit();
  return added;
}

std::size_t SqliteStore::insert(const Batch& batch) {
  const std::vector<std::size_t> all = placesOf(Batch::columns());
  const std::vector<std::size_t> words = placesOf(kWordColumns);
  if (insert_ == nullptr) {
    std::string values;
    for (std::size_t at = 0; at < all.size(); ++at) values += at == 0 ? "?" : ", ?";
    insert_ = std::make_unique<Statement>(path_, database_.get(),
                                          "INSERT INTO events (" + listOf(Batch::columns(), "") +
                                              ") VALUES (" + values + ") ON CONFLICT DO NOTHING");
    insertWords_ = std::make_unique<Statement>(
        path_, database_.get(),
        "INSERT INTO words (rowid, " + listOf(kWordColumns, "") + ") VALUES (?, ?, ?, ?)");
  }
  std::size_t added = 0;
  for (std::size_t row = 0; row < batch.rows(); ++row) {
    insert_->bind(1, batch, row, all);
    insert_->run();
    if (sqlite3_changes(database_.get()) == 0) continue;
    ++added;
    insertWords_->bind(1, static_cast<std::uint64_t>(sqlite3_last_insert_rowid(database_.get())));
    insertWords_->bind(2, batch, row, words);
    insertWords_->run();
  }
  return added;
}

void SqliteStore::read(const log::Choice& choice, const Reading& reading,
                       const std::function<void(const StoredRecord&)>& visit) {
  const SqlCondition condition = conditionOf(choice);
  Statement rows = statement(recordsQuestion(condition, reading));
  bindTexts(rows, condition);
  while (rows.step()) {
    const RecordPlace place = placeIn(rows, 1);
    visit({rows.bytes(0), place.file, place.index, place.offset, rows.number(4) != 0});
  }
}

std::vector<bool> SqliteStore::has(std::span<const RecordKey> keys) {
  Statement question = statement("SELECT 1 FROM events WHERE timestamp = ? AND hash = ?");
  std::vector<bool> known;
  for (const RecordKey& key : keys) {
    question.bind(1, std::uint64_t{key.timestamp});
    question.bind(2, key.hash);
    known.push_back(question.step());
    question.reset();
  }
  return known;
}

void SqliteStore::forEachLog(const std::function<void(const StoredLog&)>& visit) {
  Statement logs = statement(kLogsQuestion);
  while (logs.step()) {
    visit({std::string(logs.text(0)), std::string(logs.text(1)), logs.word(2), logs.word(3),
           logs.word(4), logs.number(5)});
  }
}

void SqliteStore::forEachGap(const std::function<void(const StoredGap&)>& visit) {
  Statement gaps = statement(kGapsQuestion);
  while (gaps.step()) {
    visit({std::string(gaps.text(0)), std::string(gaps.text(1)), gaps.word(2), gaps.word(3),
           gaps.word(4)});
  }
}

std::uint64_t SqliteStore::decodeAgain(const log::Choice& choice,
                                       const std::function<void(std::uint64_t)>& progress) {
  const SqlCondition condition = conditionOf(choice);
  std::uint64_t last = 0;
  std::uint64_t decoded = 0;
  for (;;) {
    Batch batch;
    std::vector<std::uint64_t> ids;
    Statement rows = statement(againQuestion(condition, last, kRowsAtOnce));
    bindTexts(rows, condition);
    while (rows.step()) {
      batch.add(rows.bytes(0), placeIn(rows, 1));
      ids.push_back(rows.number(4));
    }
    rows.reset();
    if (ids.empty()) return decoded;
    replace(ids, batch);
    last = ids.back();
    decoded += ids.size();
    progress(decoded);
  }
}

void SqliteStore::replace(std::span<const std::uint64_t> ids, const Batch& batch) {
  const std::vector<std::size_t> all = placesOf(Batch::columns());
  Transaction transaction(*this);
  Statement update =
      statement("UPDATE events SET " + listOf(Batch::columns(), " = ?") + " WHERE id = ?");
  for (std::size_t row = 0; row < batch.rows(); ++row) {
    update.bind(1, batch, row, all);
    update.bind(static_cast<int>(all.size()) + 1, ids[row]);
    update.run();
  }
  transaction.commit();
}

}  // namespace

std::unique_ptr<Store> openSqliteStore(const std::string& path, StoreAccess access) {
  return std::make_unique<SqliteStore>(path, access);
}

}  // namespace mpuevent::tool
