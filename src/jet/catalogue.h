// 目录: which table has which column of which type: what makes the dialect true.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace jxc::jet {

enum class ColumnType { Counter, Integer, Bit, Numeric, Double, Text, LongText };

struct Column {
  std::string name;
  ColumnType type = ColumnType::Text;
  int width = 0;         // characters of a Text column; 0 when unbounded
  std::string declared;  // as written: "nvarchar(64)", "numeric(28,6)"
};

struct Table {
  std::string name;
  std::vector<Column> columns;
  std::vector<std::string> indexes;  // native statements that made them, for a table that has to be rebuilt
  const Column* find(std::string_view column) const;  // without regard to case
};

/// The tables of the connection in use. Pointers stay valid until the next definition statement.
class Catalogue {
 public:
  virtual ~Catalogue() = default;
  virtual const Table* table(std::string_view name) const = 0;  // without regard to case; null when it is not there
};

/// "varchar (8)", "Counter", "numeric(28,6)" … to a column; throws SyntaxError for a type the dialect does not have.
Column columnFromDeclaration(std::string_view name, std::string_view declared);

}  // namespace jxc::jet
