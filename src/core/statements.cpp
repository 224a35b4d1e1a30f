#include "core/statements.h"

#include "core/posting.h"

#include <QVarLengthArray>

#include <stdexcept>

namespace jxc {
namespace statements_detail {

using Values = QVarLengthArray<Value, 48>;

/// The statement's text grows in a buffer that is kept, and the engine finds the statement by it: putting the few names
/// together costs no more than a key of a table of texts would, and nothing is allocated for it.
std::string& emptyBuffer() {
  thread_local std::string buffer;
  buffer.clear();
  return buffer;
}

void requireFields(std::string_view table, std::initializer_list<Field> fields) {
  if (!isName(table)) throw std::invalid_argument("not a table: " + std::string(table));
  if (fields.size() == 0) throw std::invalid_argument("no fields for " + std::string(table));
  for (const Field& field : fields)
    if (!field.first.empty() && !isName(field.first))
      throw std::invalid_argument("not a field name: " + std::string(field.first));
}

/// Hands the statement that appends a row and its values to `run`.
template <class Run>
void appending(std::string_view table, std::initializer_list<Field> fields, Run run) {
  requireFields(table, fields);
  std::string& sql = emptyBuffer();
  Values values;
  sql.append("insert into ").append(table);
  char separator = '(';
  for (const Field& field : fields) {
    if (field.first.empty()) continue;
    sql += separator;
    sql += field.first;
    separator = ',';
    values.push_back(field.second);
  }
  sql += ") values (?";
  for (qsizetype i = 1; i < values.size(); ++i)
    sql += ",?";
  sql += ')';
  run(std::string_view(sql), std::span<const Value>(values.data(), static_cast<std::size_t>(values.size())));
}

}  // namespace statements_detail

std::int64_t insertRow(std::string_view table, std::initializer_list<Field> fields) {
  Database& database = accountDb();
  statements_detail::appending(table, fields, [&](const SqlText& sql, auto values) { database.execute(sql, values); });
  return database.lastCounter();
}

void postRow(std::string_view table, std::initializer_list<Field> fields) {
  statements_detail::appending(table, fields,
                               [](const SqlText& sql, auto values) { postStatement(accountDb(), sql, values); });
}

void updateRow(std::string_view table, std::int64_t id, std::initializer_list<Field> fields) {
  using namespace statements_detail;
  requireFields(table, fields);
  std::string& sql = emptyBuffer();
  Values values;
  sql.append("update ").append(table).append(" set ");
  for (const Field& field : fields) {
    if (field.first.empty()) continue;
    if (!values.isEmpty()) sql += ',';
    sql.append(field.first).append("=?");
    values.push_back(field.second);
  }
  sql += " where id=?";
  values.push_back(Value(static_cast<long long>(id)));
  // Nobody asks how many: on a server it travels with the next question.
  postStatement(accountDb(), std::string_view(sql), {values.data(), static_cast<std::size_t>(values.size())});
}

}  // namespace jxc
