// 对照基准: an account set for measuring, and the bare SQLite interface that the measurements stand beside.
#pragma once

#include "core/data_module.h"
#include "core/prompt.h"
#include "core/schema/schema.h"
#include "core/session.h"
#include "core/statements.h"
#include "engine/sqlite/sqlite_database.h"

#include <QTemporaryDir>

#include <cmath>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace jxc::bench {

/// An account set in a file of its own, with its durable commits, and the administrator at work.
class Shop {
 public:
  Shop() {
    SqliteOptions options;
    options.create = true;
    auto database = openSqlite(directory_.filePath(QStringLiteral("jxc.mdb")), options);
    database_ = database.get();
    dataModule().installAccountDb(std::move(database));
    createAllTables(accountDb());
    upgradeSchema(accountDb());
    session() = Session{};
    session().a_name = QStringLiteral("admin");
    session().a_sn = session().r_sn = QStringLiteral("100001");
    loadSession();
  }
  ~Shop() {
    if (dataModule().isAccountOpen() && &accountDb() == database_) dataModule().closeAccountDb();
  }
  /// To see whether another shop has taken its place meanwhile.
  const Database* database() const { return database_; }
  sqlite3* native() { return sqlite::asSqlite(accountDb()).native(); }

 private:
  QTemporaryDir directory_;
  const Database* database_ = nullptr;
};

/// The shop that this routine fills, made when it is asked for and another has taken its place meanwhile.
template <void (*Fill)(Shop&)>
Shop& filledShop() {
  dataModule();  // outlives the shop, which closes its file there
  static std::optional<Shop> shop;
  if (!shop || !dataModule().isAccountOpen() || &accountDb() != shop->database()) {
    shop.reset();
    Fill(shop.emplace());
  }
  return *shop;
}

class YesPrompt : public Prompt {
 public:
  void notice(const QString& text) override { throw std::runtime_error(text.toStdString()); }
  bool ask(const QString&) override { return true; }
  Answer askOrCancel(const QString&) override { return Answer::Yes; }
};

/// One prepared statement of the bare interface; values are bound in order.
class Bare {
 public:
  Bare(sqlite3* connection, const char* text) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v3(connection, text, -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(connection));
    statement_.reset(raw);
  }
  Bare& operator<<(double value) { return sqlite3_bind_double(get(), ++bound_, value), *this; }
  Bare& operator<<(sqlite3_int64 value) { return sqlite3_bind_int64(get(), ++bound_, value), *this; }
  Bare& operator<<(const std::string& value) {
    sqlite3_bind_text(get(), ++bound_, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    return *this;
  }
  bool step() { return sqlite3_step(get()) == SQLITE_ROW; }
  void run() {
    if (sqlite3_step(get()) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(get())));
    reset();
  }
  void reset() {
    sqlite3_reset(get());
    bound_ = 0;
  }
  double number(int column) { return sqlite3_column_double(get(), column); }
  sqlite3_int64 integer(int column) { return sqlite3_column_int64(get(), column); }
  std::string text(int column) {
    const auto* raw = reinterpret_cast<const char*>(sqlite3_column_text(get(), column));
    return raw ? raw : "";
  }
  /// Takes every cell of the row as what it is.
  double takeRow() {
    double taken = 0;
    for (int column = 0; column < sqlite3_column_count(get()); ++column) {
      const int type = sqlite3_column_type(get(), column);
      if (type == SQLITE_TEXT)
        taken += sqlite3_column_text(get(), column)[0] + sqlite3_column_bytes(get(), column);
      else if (type != SQLITE_NULL)
        taken += sqlite3_column_double(get(), column);
    }
    return taken;
  }
  /// Takes all rows; values may be bound anew then.
  double takeAll() {
    double taken = 0;
    while (step())
      taken += takeRow();
    reset();
    return taken;
  }
  sqlite3_stmt* get() { return statement_.get(); }

 private:
  sqlite::StatementHandle statement_;
  int bound_ = 0;
};

/// What this process holds in memory.
inline double residentMegabytes() {
  std::ifstream file("/proc/self/statm");
  double all = 0, resident = 0;
  file >> all >> resident;
  return resident * 4096 / 1e6;
}

inline double roundTo(double value, double scale) {
  return std::round((value + 1e-9) * scale) / scale;
}

}  // namespace jxc::bench
