// Any text as a statement of the dialect: it is refused with a place and a reason, or it becomes statements that SQLite
// can parse. Nothing else may happen.
#include "jet/catalogue.h"
#include "jet/plan.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace jxc::jet;

class ShopCatalogue : public Catalogue {
 public:
  ShopCatalogue() {
    add("jxc_goods", {{"id", "Counter"},
                      {"g_sn", "varchar(32)"},
                      {"g_name", "nvarchar(64)"},
                      {"g_jm", "varchar(32)"},
                      {"g_jj", "numeric(28,6)"},
                      {"g_pjjj", "numeric(28,6)"},
                      {"g_kc", "numeric(28,6)"},
                      {"g_jy", "bit"},
                      {"gc_sn", "varchar(32)"},
                      {"g_zdkc", "int"}});
    add("jxc_goodslist", {{"id", "Counter"},
                          {"gl_flag", "varchar(2)"},
                          {"gl_djh", "varchar(16)"},
                          {"gl_kdrq", "varchar(32)"},
                          {"g_sn", "varchar(32)"},
                          {"ck_sn", "varchar(8)"},
                          {"gl_sl", "numeric(28,6)"},
                          {"gl_je", "numeric(28,6)"},
                          {"gl_pjjj", "numeric(28,6)"},
                          {"gl_note", "nvarchar(200)"},
                          {"id2", "int"}});
    add("jxc_kcsp", {{"id", "Counter"},
                     {"ck_sn", "varchar(8)"},
                     {"g_sn", "varchar(32)"},
                     {"kc_sl", "numeric(28,6)"},
                     {"kc_zsl", "numeric(28,6)"},
                     {"kc_cbj", "numeric(28,6)"}});
    add("jxc_ckxx", {{"id", "Counter"}, {"ck_sn", "varchar(8)"}, {"ck_name", "nvarchar(64)"}, {"ck_default", "bit"}});
  }
  const Table* table(std::string_view name) const override {
    const auto found = tables_.find(std::string(name));
    return found == tables_.end() ? nullptr : &found->second;
  }

 private:
  void add(const char* name, std::initializer_list<std::pair<const char*, const char*>> columns) {
    Table& table = tables_[name];
    table.name = name;
    for (const auto& [column, type] : columns)
      table.columns.push_back(columnFromDeclaration(column, type));
  }
  std::map<std::string, Table> tables_;
};

/// The statement goes through the parser of SQLite. What its tables and functions are is no matter here.
void mustParse(const std::string& sql, std::string_view text) {
  static sqlite3* const connection = [] {
    sqlite3* opened = nullptr;
    sqlite3_open(":memory:", &opened);
    return opened;
  }();
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(connection, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
    const char* message = sqlite3_errmsg(connection);
    if (std::strstr(message, "syntax error") || std::strstr(message, "unrecognized token") ||
        std::strstr(message, "incomplete input")) {
      std::fprintf(stderr, "%s\nfrom: %.*s\nto: %s\n", message, static_cast<int>(text.size()), text.data(),
                   sql.c_str());
      std::abort();
    }
  }
  sqlite3_finalize(statement);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const ShopCatalogue catalogue;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const Engine engine : {Engine::Sqlite, Engine::Postgres}) {
    try {
      const Plan plan = translate(text, catalogue, engine);
      if (engine == Engine::Sqlite)
        for (const Step& step : plan.steps)
          mustParse(step.sql, text);
    } catch (const TranslateError& refusal) {
      if (refusal.position > static_cast<int>(size)) std::abort();
    }
  }
  return 0;
}
