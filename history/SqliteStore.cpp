#include "base/CodePage.h"
#include "history/Store.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

namespace History {

namespace {

constexpr int applicationId = 0x56484953; ///< in the file's header: "VHIS"
constexpr int version = 1;
constexpr int busyTimeout_ms = 500; ///< another program's write lasts as long as its flush
constexpr int primaryCode = 0xFF;   ///< what an extended result code keeps in its low byte

constexpr const char* schema = R"(
CREATE TABLE IF NOT EXISTS entries (
  number INTEGER PRIMARY KEY AUTOINCREMENT,
  at TEXT NOT NULL, kind TEXT NOT NULL, analyst TEXT NOT NULL, user TEXT NOT NULL,
  channel TEXT NOT NULL, electrode TEXT NOT NULL, serialNo TEXT NOT NULL, file TEXT NOT NULL,
  text TEXT NOT NULL, data TEXT NOT NULL,
  before TEXT NOT NULL, sum TEXT NOT NULL);
CREATE INDEX IF NOT EXISTS byElectrode ON entries (kind, electrode, serialNo);
CREATE INDEX IF NOT EXISTS byFile ON entries (file);
CREATE TRIGGER IF NOT EXISTS noChange BEFORE UPDATE ON entries
  BEGIN SELECT RAISE(ABORT, 'the history only grows'); END;
CREATE TRIGGER IF NOT EXISTS noRemoval BEFORE DELETE ON entries
  BEGIN SELECT RAISE(ABORT, 'the history only grows'); END;
CREATE TRIGGER IF NOT EXISTS noReplacement BEFORE INSERT ON entries
  WHEN EXISTS (SELECT 1 FROM entries WHERE number = NEW.number)
  BEGIN SELECT RAISE(ABORT, 'the history only grows'); END;
)";

const std::string columns = "number, at, kind, analyst, user, channel, electrode, serialNo, file, "
                            "text, data, before, sum";
constexpr int firstField = 1;
constexpr int columnBefore = firstField + static_cast<int>(Row::fieldCount);
constexpr int columnSum = columnBefore + 1;

/// The error as this house tells it.
[[noreturn]] void Rethrow(const SQLite::Exception& error, const std::filesystem::path& file) {
    const std::string text = CodePage::NameOf(file) + ": " + error.getErrorStr();
    const int code = error.getErrorCode() & primaryCode;
    if (code == SQLITE_CORRUPT || code == SQLITE_NOTADB)
        throw Damaged(text);
    throw RunTimeError(text);
}

Row RowOf(SQLite::Statement& statement) {
    Row row;
    row.number = statement.getColumn(0).getInt64();
    int column = firstField;
    for (std::string& field : row.fields)
        field = statement.getColumn(column++).getString();
    row.before = statement.getColumn(columnBefore).getString();
    row.sum = statement.getColumn(columnSum).getString();
    return row;
}

/// The conditions of a wish as SQL, and the values that they are held against.
struct Condition {
    explicit Condition(const Wish& wish) {
        if (wish.after > 0)
            sql += " AND number > " + std::to_string(wish.after);
        if (wish.kind)
            Add("kind =", std::string(NameOf(*wish.kind)));
        if (wish.electrode)
            Add("electrode =", CodePage::ToUtf8(*wish.electrode));
        if (wish.serialNo)
            Add("serialNo =", CodePage::ToUtf8(*wish.serialNo));
        if (wish.file)
            Add("file =", CodePage::ToUtf8(*wish.file));
        if (!wish.from.empty())
            Add("at >=", wish.from);
        if (!wish.to.empty())
            Add("at <=", wish.to);
        sql += wish.newestFirst ? " ORDER BY number DESC" : " ORDER BY number";
        if (wish.most)
            sql += " LIMIT " + std::to_string(*wish.most);
    }

    std::string sql = " WHERE 1";
    std::vector<std::string> values;

private:
    void Add(const char* comparison, std::string value) {
        sql += std::string(" AND ") + comparison + " ?";
        values.push_back(std::move(value));
    }
};

class SqliteStore : public Store {
private:
    template <class Work>
    auto Guarded(Work work) const {
        try {
            return work();
        } catch (const SQLite::Exception& error) {
            Rethrow(error, file_);
        }
    }

public:
    enum class Purpose { keep, read };

    /// SQLite is asked to write even for who only reads: its last reader clears away what it keeps
    /// beside the file. A file that is write-protected it opens for reading.
    SqliteStore(const std::filesystem::path& file, Purpose purpose) try
        : file_(file),
          database_(file,
                    purpose == Purpose::keep ? SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE
                                             : SQLite::OPEN_READWRITE,
                    busyTimeout_ms) {
        Check();
        if (purpose == Purpose::keep)
            Prepare();
        else if (Pragma("user_version") != version)
            throw Damaged(CodePage::NameOf(file_) + ": This is no history");
    } catch (const SQLite::Exception& error) {
        Rethrow(error, file);
    }

    void Append(std::span<const Row::Fields> rows) override {
        Guarded([&] {
            // Locked from the first look at the last row on: no other program comes between.
            SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
            Row row;
            row.before = LastSum();
            row.number = LastNumber();
            SQLite::Statement insert(database_,
                                     "INSERT INTO entries (" + columns +
                                         ") VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
            for (const Row::Fields& fields : rows) {
                ++row.number;
                row.fields = fields;
                row.sum = SumOf(row);
                Insert(insert, row);
                row.before = row.sum;
            }
            transaction.commit();
            return 0;
        });
    }

    std::vector<Row> Rows(const Wish& wish) const override {
        return Guarded([&] {
            const Condition condition(wish);
            SQLite::Statement select(database_,
                                     "SELECT " + columns + " FROM entries" + condition.sql);
            int place = 1;
            for (const std::string& value : condition.values)
                select.bind(place++, value);
            std::vector<Row> rows;
            while (select.executeStep())
                rows.push_back(RowOf(select));
            return rows;
        });
    }

    std::int64_t LastNumber() const override {
        return Guarded([&] {
            SQLite::Statement select(database_,
                                     "SELECT seq FROM sqlite_sequence WHERE name = 'entries'");
            return select.executeStep() ? select.getColumn(0).getInt64() : std::int64_t{0};
        });
    }

    bool HasMoved() const override {
        int moved = 0;
        ::sqlite3_file_control(database_.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
        return moved != 0;
    }

private:
    int Pragma(const char* name) const {
        return database_.execAndGet(std::string("PRAGMA ") + name).getInt();
    }

    /// A file that is whole, and a history or still empty.
    void Check() {
        const std::string finding = database_.execAndGet("PRAGMA quick_check(1)").getString();
        if (finding != "ok")
            throw Damaged(CodePage::NameOf(file_) + ": " + finding);
        if (Pragma("application_id") != applicationId &&
            database_.execAndGet("SELECT count(*) FROM sqlite_master").getInt() > 0)
            throw Damaged(CodePage::NameOf(file_) + ": This is no history");
        if (Pragma("user_version") > version)
            throw RunTimeError(CodePage::NameOf(file_) +
                               ": It was made by a later version of the program");
    }

    void Prepare() {
        // Where the log cannot be kept, on a disk of the network, SQLite stays with its journal;
        // a commit is on the disk either way.
        database_.execAndGet("PRAGMA journal_mode = WAL");
        database_.exec("PRAGMA synchronous = FULL");
        // Moving the log into the file costs flushes of its own; it is done when the last program
        // closes the file, or when the log has grown large.
        database_.execAndGet("PRAGMA wal_autocheckpoint = 10000");
        if (Pragma("user_version") == version)
            return;
        SQLite::Transaction transaction(database_, SQLite::TransactionBehavior::IMMEDIATE);
        database_.exec(schema);
        database_.exec("PRAGMA application_id = " + std::to_string(applicationId));
        database_.exec("PRAGMA user_version = " + std::to_string(version));
        transaction.commit();
    }

    std::string LastSum() const {
        SQLite::Statement select(database_, "SELECT sum FROM entries ORDER BY number DESC LIMIT 1");
        return select.executeStep() ? select.getColumn(0).getString() : noSum;
    }

    static void Insert(SQLite::Statement& insert, const Row& row) {
        insert.reset();
        int place = 1;
        insert.bind(place++, row.number);
        for (const std::string& field : row.fields)
            insert.bind(place++, field);
        insert.bind(place++, row.before);
        insert.bind(place, row.sum);
        insert.exec();
    }

    std::filesystem::path file_;
    mutable SQLite::Database database_; // asking it a question changes no more than its caches
};

} // namespace

bool CanBeKept() {
    return true;
}

std::unique_ptr<Store> OpenStore(const std::filesystem::path& file) {
    return std::make_unique<SqliteStore>(file, SqliteStore::Purpose::keep);
}

std::unique_ptr<const Store> OpenStoreToRead(const std::filesystem::path& file) {
    return std::make_unique<SqliteStore>(file, SqliteStore::Purpose::read);
}

} // namespace History
