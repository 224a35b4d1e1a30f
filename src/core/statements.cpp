#include "core/statements.h"

#include "core/posting.h"

#include <QVarLengthArray>

#include <algorithm>
#include <stdexcept>

namespace jxc {
namespace statements_detail {

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool isName(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isLetter);
}

/// "name" or "alias.name"
void requireIdentifier(std::string_view text) {
  const std::size_t point = text.find('.');
  const bool fits =
      point == std::string_view::npos ? isName(text) : isName(text.substr(0, point)) && isName(text.substr(point + 1));
  if (!fits) throw std::invalid_argument("not an identifier: " + std::string(text));
}

using Values = QVarLengthArray<Value, 48>;

/// The statement's text grows in a buffer that is kept, and the engine finds the statement by it: putting the few names
/// together costs no more than a key of a table of texts would, and nothing is allocated for it.
std::string& emptyBuffer() {
  thread_local std::string buffer;
  buffer.clear();
  return buffer;
}

void requireFields(std::string_view table, std::initializer_list<Field> fields) {
  requireIdentifier(table);
  if (fields.size() == 0) throw std::invalid_argument("no fields for " + std::string(table));
  for (const Field& field : fields)
    if (!isName(field.first)) throw std::invalid_argument("not a field name: " + std::string(field.first));
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
    sql += separator;
    sql += field.first;
    separator = ',';
    values.push_back(field.second);
  }
  sql += ") values (?";
  for (std::size_t i = 1; i < fields.size(); ++i)
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
    if (!values.isEmpty()) sql += ',';
    sql.append(field.first).append("=?");
    values.push_back(field.second);
  }
  sql += " where id=?";
  values.push_back(Value(static_cast<long long>(id)));
  // Nobody asks how many: on a server it travels with the next question.
  postStatement(accountDb(), std::string_view(sql), {values.data(), static_cast<std::size_t>(values.size())});
}

std::string compose(std::string_view pattern, std::initializer_list<std::string_view> identifiers) {
  std::string sql;
  sql.reserve(pattern.size() + identifiers.size() * 16);
  const auto* next = identifiers.begin();
  for (std::size_t at = 0; at < pattern.size();) {
    if (pattern.compare(at, 2, "{}") != 0) {
      sql += pattern[at++];
      continue;
    }
    if (next == identifiers.end()) throw std::invalid_argument("too few identifiers for: " + std::string(pattern));
    statements_detail::requireIdentifier(*next);
    sql += *next++;
    at += 2;
  }
  if (next != identifiers.end()) throw std::invalid_argument("too many identifiers for: " + std::string(pattern));
  return sql;
}

}  // namespace jxc
