#include "core/statement_script.h"

#include <algorithm>
#include <cctype>

namespace jxc {
namespace statement_script_detail {

bool isSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

/// Behind the quoted text or bracketed name that begins at `at`; the end of the text when it is not closed. A doubled
/// quote needs no care: it reads as two quoted texts side by side.
std::size_t skipQuoted(std::string_view text, std::size_t at) {
  const char close = text[at] == '[' ? ']' : text[at];
  const std::size_t end = text.find(close, at + 1);
  return end == std::string_view::npos ? text.size() : end + 1;
}

bool opensQuote(char c) {
  return c == '\'' || c == '"' || c == '[';
}

std::size_t skipSpaceAndRemarks(std::string_view script, std::size_t at) {
  while (at < script.size()) {
    if (isSpace(script[at])) {
      ++at;
    } else if (script.substr(at, 2) == "--") {
      at = std::min(script.find('\n', at), script.size());
    } else {
      break;
    }
  }
  return at;
}

/// The next bare word of a statement in lower case, outside quotes and brackets; empty at its end.
std::string nextWord(std::string_view statement, std::size_t& at) {
  while (at < statement.size()) {
    if (opensQuote(statement[at])) {
      at = skipQuoted(statement, at);
    } else if (std::isalpha(static_cast<unsigned char>(statement[at]))) {
      std::string word;
      for (; at < statement.size() && (std::isalnum(static_cast<unsigned char>(statement[at])) || statement[at] == '_');
           ++at) {
        word += static_cast<char>(std::tolower(static_cast<unsigned char>(statement[at])));
      }
      return word;
    } else {
      ++at;
    }
  }
  return {};
}

}  // namespace statement_script_detail

std::vector<ScriptStatement> splitStatements(std::string_view script) {
  using namespace statement_script_detail;
  std::vector<ScriptStatement> statements;
  for (std::size_t begin = skipSpaceAndRemarks(script, 0); begin < script.size();) {
    std::size_t end = begin;
    while (end < script.size() && script[end] != ';') {
      end = opensQuote(script[end]) ? skipQuoted(script, end) : end + 1;
    }
    std::size_t last = end;
    while (last > begin && isSpace(script[last - 1]))
      --last;
    if (last > begin) statements.push_back({script.substr(begin, last - begin), begin});
    begin = skipSpaceAndRemarks(script, std::min(end + 1, script.size()));
  }
  return statements;
}

bool givesRows(std::string_view statement) {
  using namespace statement_script_detail;
  std::size_t at = 0;
  if (nextWord(statement, at) != "select") return false;
  for (std::string word = nextWord(statement, at); !word.empty(); word = nextWord(statement, at)) {
    if (word == "into") return false;
  }
  return true;
}

ScriptPosition positionIn(std::string_view script, std::size_t offset) {
  ScriptPosition position;
  for (const char c : script.substr(0, offset)) {
    if (c == '\n') {
      ++position.line;
      position.column = 1;
    } else if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) {
      ++position.column;
    }
  }
  return position;
}

}  // namespace jxc
