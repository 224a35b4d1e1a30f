#include "jet/catalogue.h"

#include "jet/lexer.h"
#include "jet/plan.h"

#include <charconv>

namespace jxc::jet {

namespace catalogue_detail {

struct TypeEntry {
  std::string_view name;
  ColumnType type;
  std::string_view declared;  // the spelling that is kept; empty: as written
};

constexpr TypeEntry kTypes[] = {
    {"varchar", ColumnType::Text, ""},
    {"nvarchar", ColumnType::Text, ""},
    {"numeric", ColumnType::Numeric, ""},
    {"int", ColumnType::Integer, "int"},
    {"integer", ColumnType::Integer, "int"},
    {"bit", ColumnType::Bit, "bit"},
    {"counter", ColumnType::Counter, "counter"},
    {"text", ColumnType::LongText, ""},
    {"char", ColumnType::Text, ""},
    {"nchar", ColumnType::Text, ""},
    {"ntext", ColumnType::LongText, "text"},
    {"memo", ColumnType::LongText, "text"},
    {"longtext", ColumnType::LongText, "text"},
    {"decimal", ColumnType::Numeric, ""},
    {"money", ColumnType::Numeric, "numeric(28,6)"},
    {"currency", ColumnType::Numeric, "numeric(28,6)"},
    {"double", ColumnType::Double, "double"},
    {"float", ColumnType::Double, "double"},
    {"real", ColumnType::Double, "double"},
    {"single", ColumnType::Double, "double"},
    {"long", ColumnType::Integer, "int"},
    {"short", ColumnType::Integer, "int"},
    {"smallint", ColumnType::Integer, "int"},
    {"tinyint", ColumnType::Integer, "int"},
    {"byte", ColumnType::Integer, "int"},
    {"yesno", ColumnType::Bit, "bit"},
    {"logical", ColumnType::Bit, "bit"},
    {"boolean", ColumnType::Bit, "bit"},
    {"autoincrement", ColumnType::Counter, "counter"},
};

}  // namespace catalogue_detail

const Column* Table::find(std::string_view column) const {
  for (const Column& c : columns) {
    if (sameName(c.name, column)) return &c;
  }
  return nullptr;
}

Column columnFromDeclaration(std::string_view name, std::string_view declared) {
  std::string text;
  for (char c : declared) {
    if (c != ' ' && c != '\t') text += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  }
  const std::size_t bracket = text.find('(');
  const std::string_view type = std::string_view(text).substr(0, bracket);
  for (const auto& entry : catalogue_detail::kTypes) {
    if (entry.name != type) continue;
    Column column{std::string(name), entry.type, 0, std::string(entry.declared.empty() ? text : entry.declared)};
    if (bracket != std::string::npos) {
      int width = 0;
      std::from_chars(text.data() + bracket + 1, text.data() + text.size(), width);
      if (width < 1) break;
      if (column.type == ColumnType::LongText) column.type = ColumnType::Text;  // text(20) is a text with a width
      if (column.type == ColumnType::Text) column.width = width;
    } else if (column.type == ColumnType::Numeric && entry.declared.empty()) {
      column.declared += "(28,6)";
    }
    return column;
  }
  throw TranslateError(TranslateError::Kind::Syntax, "unknown column type " + std::string(declared), 0);
}

}  // namespace jxc::jet
